// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

class Preferences;

/// Lays out the lines of a length report by a person's pattern, in which "%number", "%name" and "%time" stand
/// for a track's number, name and length.
class SHNtoolOutputNamingFormatParser
{
public:
    /// The pattern is the preference "shntoolNamesFormat".
    explicit SHNtoolOutputNamingFormatParser(const Preferences &preferences);
    explicit SHNtoolOutputNamingFormatParser(const QString &pattern);

    /// A track's line, with a line break.
    QString getFormattedLineWithName(const QString &name, const QString &time,
                                     const QString &trackNumber) const;
    /// The line for the length of all tracks, with a line break: the pattern less number and name and what
    /// stands in their words.
    QString getFormattedTotalLine(const QString &time) const;

private:
    QString m_shntoolNamesFormat; // less the slashes that may enclose it
};

} // namespace kruv
