// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

namespace kruv {

class SHNtoolOutputNamingFormatParser;

/// What "shntool len" printed, laid out for a person.
class SHNToolLenReport
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolLenReport)
public:
    /// Files that belong together, as a concert or a disc of one.
    struct FileSet
    {
        /// Empty where the set isn't one of several discs.
        QString discNumber;
        /// Whole paths as given to the tool.
        QStringList files;
        /// Track names in the order of `files`; may be fewer, or empty for a plain listing by file names.
        QStringList names;
        /// Characters of the longest name.
        int maxTrackNameLength = 0;
    };

    explicit SHNToolLenReport(const QString &output);

    /// Warnings and errors of the tool, a line each.
    const QString &messages() const { return m_messages; }
    /// The tool's own table with file names instead of whole paths.
    QString normal() const;
    /// Numbered tracks with their lengths, and the length of all.
    QString byFileSet(const FileSet &set, const SHNtoolOutputNamingFormatParser &parser) const;

private:
    struct Track
    {
        QString path;
        QString length;
    };
    void takeLine(const QString &line);

    QStringList m_lines;
    QString m_messages;
    std::vector<Track> m_tracks;
    QString m_total;
};

} // namespace kruv
