// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolLenReport.h"

#include "base/PathNames.h"
#include "regex/Regex.h"
#include "shntool/SHNToolOutput.h"
#include "shntool/SHNtoolOutputNamingFormatParser.h"

#include <QHash>

namespace kruv {

namespace {

QString withoutFolder(const QString &line)
{
    const qsizetype slash = line.indexOf(u'/');
    return slash < 0 ? line : line.left(slash) + PathNames::lastPathComponent(line.sliced(slash));
}

/// A name with a line break in it would break the listing's lines.
QString onOneLine(QString name)
{
    return name.replace(u'\n', u' ');
}

} // namespace

SHNToolLenReport::SHNToolLenReport(const QString &output)
{
    SHNToolOutput::Parts parts = SHNToolOutput::takeApart(output);
    m_messages = std::move(parts.messages);
    m_lines = parts.report.split(u'\n');
    for (qsizetype index = 1; index < m_lines.size(); ++index) {
        takeLine(m_lines[index]);
    }
}

void SHNToolLenReport::takeLine(const QString &line)
{
    static const Regex row(QStringLiteral("(?s)^ +([0-9]+:[0-9.]+) [^/]*(/.*)?$"));
    const auto found = row.find(line);
    if (!found) {
        // The rest of a name with a line break in it.
        if (!m_tracks.empty() && m_total.isEmpty() && !line.trimmed().isEmpty()) {
            m_tracks.back().path += u'\n' + line;
        }
        return;
    }
    QString length = found->captures[1];
    if (length.indexOf(u':') == 1) {
        length.prepend(u'0');
    }
    if (found->captures[2].isEmpty()) {
        m_total = length;
    } else {
        m_tracks.push_back({found->captures[2], length});
    }
}

QString SHNToolLenReport::normal() const
{
    QString text = m_lines.value(0);
    for (qsizetype index = 1; index < m_lines.size(); ++index) {
        text += u'\n' + withoutFolder(m_lines[index]);
    }
    return text;
}

QString SHNToolLenReport::byFileSet(const FileSet &set, const SHNtoolOutputNamingFormatParser &parser) const
{
    const bool isDisc = !set.discNumber.isEmpty();
    QString text = isDisc ? tr("Disc %1\n\n").arg(set.discNumber) : QString();
    QHash<QString, qsizetype> places;
    for (qsizetype place = 0; place < set.files.size(); ++place) {
        places.insert(set.files[place], place);
    }
    for (std::size_t index = 0; index < m_tracks.size(); ++index) {
        const Track &track = m_tracks[index];
        const QString number = QStringLiteral("%1").arg(index + 1, 2, 10, QLatin1Char('0'));
        // The tool leaves files out that it can't read; the others keep their names.
        const qsizetype nameAt = places.value(track.path, static_cast<qsizetype>(index));
        const QString name = onOneLine(nameAt < set.names.size() ? set.names[nameAt]
                                                                 : PathNames::lastPathComponent(track.path));
        text += set.names.isEmpty()
                    ? QStringLiteral("%1 %2 %3\n").arg(number, name, track.length)
                    : parser.getFormattedLineWithName(name.leftJustified(set.maxTrackNameLength + 1),
                                                      track.length, number);
    }
    const QString total = parser.getFormattedTotalLine(m_total);
    return text + (isDisc ? tr("\nDisc %1 Total: %2 \n\n").arg(set.discNumber, total)
                          : tr("\nTotal: %1 \n\n").arg(total));
}

} // namespace kruv
