// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Readers of what shntool prints while it works.
namespace kruv::SHNToolOutput {

/// The percentage in the line that the tool is drawing
/// ("Trimming [/a/x.wav] (0:24.00) --> [/b/x-trimmed.wav] :  37% "), where there is one yet.
std::optional<double> percentage(QStringView line);

/// The line's first word where it is one that a phase of the tool's work begins with ("Trimming"), else null.
QString phase(QStringView line);

/// Last path component of the file that the line names first, or null.
QString fileName(QStringView line);

/// A tool's output taken apart: its report, and the warnings and errors that the other stream put anywhere
/// into it, even into the middle of a line.
struct Parts
{
    QString report;
    QString messages;
};
Parts takeApart(const QString &output);

} // namespace kruv::SHNToolOutput
