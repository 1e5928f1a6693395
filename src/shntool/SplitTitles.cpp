// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SplitTitles.h"

#include "tags/TrackNameText.h"

#include <QLoggingCategory>
#include <QStringList>

#include <algorithm>

namespace kruv::SplitTitles {

namespace {

Q_LOGGING_CATEGORY(splitLog, "kruv.shntool", QtWarningMsg)

constexpr QStringView trackWord = u"TRACK";
constexpr QStringView titleWord = u"TITLE";

QString numbered(int track)
{
    return QStringLiteral("%1").arg(track, 2, 10, QLatin1Char('0'));
}

QString withoutQuotes(QStringView text)
{
    if (text.startsWith(u'"')) {
        text = text.sliced(1);
    }
    if (text.endsWith(u'"')) {
        text.chop(1);
    }
    return text.toString();
}

/// Shortened from its end to that many bytes in UTF-8, without cutting a character.
QString shortened(QString text, qsizetype bytes)
{
    while (text.toUtf8().size() > bytes) {
        text.chop(text.back().isLowSurrogate() && text.size() > 1 ? 2 : 1);
    }
    return text;
}

} // namespace

QString fileName(int track, const QString &title, const QString &extension)
{
    constexpr qsizetype longestName = 255; // bytes, on every file system in use
    QString name = numbered(track) + u' ' + title;
    std::ranges::replace(name, QChar(u'/'), QChar(u'-'));
    std::ranges::replace_if(
        name, [](QChar each) { return each.category() == QChar::Other_Control; }, u' ');
    const QString ending = u'.' + extension;
    return shortened(name, longestName - ending.toUtf8().size()) + ending;
}

QMap<QString, QString> trackTitleMap(const QString &cueSheet, const QString &extension)
{
    QMap<QString, QString> map;
    QString title;
    int track = 0;
    const auto closeTrack = [&] {
        if (track > 0 && !title.isEmpty()) {
            const QString key = QStringLiteral("split-track%1.%2").arg(numbered(track), extension);
            const QString name = fileName(track, title, extension);
            qCInfo(splitLog, "set title: %s for key: %s", qUtf8Printable(name), qUtf8Printable(key));
            map.insert(key, name);
        }
        title.clear();
    };
    const QStringList lines = TrackNameText::withPlainLineBreaks(cueSheet).split(u'\n');
    for (const QString &each : lines) {
        const QString line = each.trimmed();
        if (line.startsWith(trackWord)) {
            closeTrack();
            ++track;
        } else if (line.startsWith(titleWord)) {
            title = withoutQuotes(QStringView(line).sliced(titleWord.size()).trimmed());
        }
    }
    closeTrack();
    return map;
}

} // namespace kruv::SplitTitles
