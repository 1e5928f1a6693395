// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

/// Reads what cdda2wav prints.
namespace kruv::CdOutput {

/// Less a percentage at the end, and less line breaks after that.
QString stripPercent(const QString &piece);
/// The text before the "%" of each word that has one.
QStringList percentages(QStringView piece);
/// What a log keeps: everything from the first "cdda2wav:" on, or all where there is none.
QString logText(const QString &output);

/// Counts the summaries that stand at the ends of tracks, in output that comes in pieces, whatever the cuts.
class TrackEnds
{
public:
    /// Returns how many tracks ended with this piece.
    int count(const QString &piece);

private:
    QString m_line; // what came since the last line break or summary
};

} // namespace kruv::CdOutput
