// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/CueSheetTagImporter.h"

#include "base/PathNames.h"
#include "base/TextFile.h"
#include "base/UserInterface.h"
#include "tags/TrackNameText.h"

namespace kruv {

namespace {

const QString titleWord = QStringLiteral("TITLE");
const QString performerWord = QStringLiteral("PERFORMER");
const QString firstTrack = QStringLiteral("TRACK 01 AUDIO");

/// What follows the keyword, without the quotation marks around it; never null.
QString valueAfter(const QString &keyword, QStringView line)
{
    QStringView value = line.sliced(keyword.size()).trimmed();
    while (value.startsWith(u'"')) {
        value = value.sliced(1);
    }
    while (value.endsWith(u'"')) {
        value.chop(1);
    }
    return value.isEmpty() ? QStringLiteral("") : value.toString();
}

} // namespace

CueSheetTagImporter::CueSheetTagImporter(UserInterface &userInterface, QObject *parent)
    : QObject(parent)
    , m_userInterface(userInterface)
{
}

CueSheetTagImporter::Sheet CueSheetTagImporter::parse(const QString &text)
{
    Sheet sheet;
    bool inTracks = false;
    const QString plain = TrackNameText::withPlainLineBreaks(text);
    for (const QStringView each : QStringView(plain).split(u'\n')) {
        const QStringView line = each.trimmed();
        if (!inTracks && line.startsWith(firstTrack)) {
            inTracks = true;
        } else if (line.startsWith(titleWord)) {
            const QString title = valueAfter(titleWord, line);
            if (inTracks) {
                sheet.trackNames.append(title);
            } else {
                sheet.album = title;
            }
        } else if (!inTracks && line.startsWith(performerWord)) {
            sheet.artist = valueAfter(performerWord, line);
        }
    }
    return sheet;
}

std::shared_ptr<TagsObject> CueSheetTagImporter::loadTagsFromCueSheet()
{
    const auto path = m_userInterface.chooseFile(tr("Choose CUE file"), {QStringLiteral("cue")});
    return path ? loadTagsFromCueSheet(*path) : nullptr;
}

std::shared_ptr<TagsObject> CueSheetTagImporter::loadTagsFromCueSheet(const QString &path)
{
    const auto text = TextFile::read(path);
    if (!text) {
        m_userInterface.alert(tr("%1 could not be read.").arg(PathNames::lastPathComponent(path)), {},
                              QStringLiteral("OK"));
        return nullptr;
    }
    const Sheet sheet = parse(*text);
    auto tags = std::make_shared<TagsObject>();
    tags->setAlbumText(sheet.album);
    tags->setArtistText(sheet.artist);
    Q_EMIT kruvTrackNamesEnteredNotification(sheet.trackNames);
    return tags;
}

} // namespace kruv
