// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Readers of what the WavPack, TTA and Monkey's Audio tools print while they test a file.
namespace kruv::VerifyOutput {

/// The number before the last "% done". A line whose only "%" is something else (WavPack's final line has the
/// compression ratio) has none.
std::optional<double> percentDone(QStringView line);

/// The number between the last "Progress: " and the "%" after it.
std::optional<double> percentAfterProgress(QStringView line);

/// The tool's text, less its banner and its empty lines, as a report: each line with "<name>: " before it and
/// a line break behind.
QString namedLines(QStringView text, const QString &name);

/// The lines from the last one with "Progress: " on, each ended by a line break; the whole text where no
/// line has it.
QString fromLastProgress(const QString &text);

} // namespace kruv::VerifyOutput
