// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Readers of what the flac tool prints. Pieces are cleaned (ToolOutput::cleaned) beforehand.
namespace kruv::FlacOutput {

struct EncodeProgress
{
    /// As printed, for example "42".
    QString percentageText;
    /// The same as a number; -1 where the piece has no percentage.
    double percentage = -1.0;
    /// "ratio=0.581", or empty.
    QString ratioText;
};

/// `name` is the source's file name, which the tool prints first and which may itself hold "%" or ": ".
EncodeProgress encodeProgress(QStringView piece, QStringView name);

/// Percentage of a decode, where the piece holds one.
std::optional<double> decodeProgress(QStringView piece, QStringView name);

/// True when a decode that goes on through errors says that it met one: a lost frame, a wrong MD5 signature,
/// or fewer samples than the file announces. The tool ends with status 0 all the same.
bool reportsDamage(QStringView piece, QStringView name);

/// True when an encode says that the source ends before the audio it announces. The tool encodes what is
/// there and ends with status 0.
bool reportsShortSource(QStringView piece);

/// True when a test met what is no audio: damage, or a tag behind the audio.
bool stumbled(QStringView report);

/// The report on a file that is sound.
QString okLines(const QString &name);

struct VerifyReport
{
    /// Lines for the file's report.
    QString lines;
    /// Set where the status line is to change; -1 for a piece that can't be read.
    std::optional<double> percentage;
};

VerifyReport verifyReport(QStringView piece, const QString &name);

/// The part of a line-wise report that is worth keeping: the last line that contains `marker` and all lines
/// after it, or the whole report where no line does.
QString condensed(const QString &report, QStringView marker);

} // namespace kruv::FlacOutput
