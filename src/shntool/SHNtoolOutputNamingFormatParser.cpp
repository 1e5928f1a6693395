// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNtoolOutputNamingFormatParser.h"

#include "base/Preferences.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kruv {

namespace {

constexpr QStringView numberToken = u"%number";
constexpr QStringView nameToken = u"%name";
constexpr QStringView timeToken = u"%time";

/// A closing slash takes the character before it along.
QString withoutSlashes(QString pattern)
{
    if (pattern.endsWith(u'/')) {
        pattern.chop(2);
    }
    if (pattern.startsWith(u'/')) {
        pattern = pattern.sliced(1);
    }
    return pattern;
}

qsizetype pastBlanks(QStringView text, qsizetype position)
{
    while (position < text.size() && text[position].isSpace()) {
        ++position;
    }
    return position;
}

qsizetype wordEnd(QStringView text, qsizetype position)
{
    while (position < text.size() && !text[position].isSpace()) {
        ++position;
    }
    return position;
}

} // namespace

SHNtoolOutputNamingFormatParser::SHNtoolOutputNamingFormatParser(const Preferences &preferences)
    : SHNtoolOutputNamingFormatParser(preferences.string(QStringLiteral("shntoolNamesFormat")))
{
}

SHNtoolOutputNamingFormatParser::SHNtoolOutputNamingFormatParser(const QString &pattern)
    : m_shntoolNamesFormat(withoutSlashes(pattern))
{
}

QString SHNtoolOutputNamingFormatParser::getFormattedLineWithName(const QString &name, const QString &time,
                                                                  const QString &trackNumber) const
{
    // In one pass, so that a name may hold a token's text.
    const std::array<std::pair<QStringView, QStringView>, 3> values{
        {{numberToken, trackNumber}, {nameToken, name}, {timeToken, time}}};
    QString line;
    QStringView rest = m_shntoolNamesFormat;
    while (!rest.isEmpty()) {
        const auto *found =
            std::ranges::find_if(values, [rest](const auto &each) { return rest.startsWith(each.first); });
        line += found == values.end() ? rest.first(1) : found->second;
        rest = rest.sliced(found == values.end() ? 1 : found->first.size());
    }
    return line + u'\n';
}

QString SHNtoolOutputNamingFormatParser::getFormattedTotalLine(const QString &time) const
{
    const QStringView pattern = m_shntoolNamesFormat;
    const qsizetype timeAt = pattern.indexOf(timeToken);
    if (timeAt < 0) {
        return QStringLiteral("\n");
    }
    qsizetype position = 0;
    for (const QStringView token : {numberToken, nameToken}) {
        if (const qsizetype at = pattern.indexOf(token); at >= 0 && at < timeAt) {
            position = std::max(position, wordEnd(pattern, at));
        }
    }
    // The time may stand in the last token's own word.
    position = std::min(pastBlanks(pattern, position), timeAt);
    QString line = pattern.sliced(position, wordEnd(pattern, timeAt) - position).toString();
    return line.replace(timeToken.toString(), time) + u'\n';
}

} // namespace kruv
