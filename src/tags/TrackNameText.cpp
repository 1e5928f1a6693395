// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/TrackNameText.h"

#include "regex/Regex.h"
#include "tags/LeadingNumber.h"

namespace kruv::TrackNameText {

namespace {

QString firstMatch(const Regex &expression, const QString &text)
{
    const auto match = expression.find(text);
    return match ? match->captures.constFirst() : QString();
}

/// "(12)" gives 12; nothing else than brackets stands before the digits.
std::int32_t trackNumber(QStringView text)
{
    while (!text.isEmpty() && !text.front().isDigit()) {
        text = text.sliced(1);
    }
    return leadingInt32(text);
}

/// A cut through a character of two units takes the other one too.
QString withoutHalves(QStringView line)
{
    if (!line.isEmpty() && line.front().isLowSurrogate()) {
        line = line.sliced(1);
    }
    if (!line.isEmpty() && line.back().isHighSurrogate()) {
        line.chop(1);
    }
    return line.toString();
}

QString withoutLength(const QString &name, const Regex &length)
{
    const QString found = firstMatch(length, name);
    return found.isEmpty() ? name : name.left(name.indexOf(found));
}

} // namespace

QString withPlainLineBreaks(const QString &text)
{
    static const Regex lineBreak(QStringLiteral("\\r\\n|[\\x{0B}\\x{0C}\\r\\x{85}\\x{2028}\\x{2029}]"));
    return lineBreak.replace(text, u"\n");
}

QString trimmed(const QString &text, const TrimCharsObject &trim)
{
    QStringList lines = text.split(u'\n');
    for (QString &line : lines) {
        if (line.size() >= trim.number) {
            line = withoutHalves(trim.position == 0 ? line.sliced(trim.number) : line.chopped(trim.number));
        }
    }
    return lines.join(u'\n');
}

QStringList namesInTrackList(const QString &trackList)
{
    static const Regex date(
        QStringLiteral("^(0?[1-9]|1[012])[- /.](0?[1-9]|[12][0-9]|3[01])[- /.](19|20)\\d\\d"));
    static const Regex number(QStringLiteral("^\\(?\\[?[0-9]+\\.?\\)?\\]?"));
    static const Regex length(QStringLiteral("\\(?\\[?[0-9]+[\\:\\.][0-9]*([\\:\\.]?[0-9]*)?\\)?\\]?$"));
    QStringList names;
    bool begun = false;
    const QStringList lines = withPlainLineBreaks(trackList).split(u'\n');
    for (const QString &line : lines) {
        const QString lead = firstMatch(number, line);
        if (lead.isEmpty() || date.isIn(line)) {
            continue;
        }
        begun = begun || trackNumber(lead) == 1;
        if (begun) {
            const QString name = line.sliced(lead.size()).trimmed();
            names.append(name.isEmpty() ? QStringLiteral("(blank)") : withoutLength(name, length));
        }
    }
    return names;
}

} // namespace kruv::TrackNameText
