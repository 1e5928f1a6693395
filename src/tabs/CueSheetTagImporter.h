// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace kruv {

class UserInterface;

/// Takes album, artist and track names from a cue sheet. Main thread only, but for parse().
class CueSheetTagImporter : public QObject
{
    Q_OBJECT
public:
    struct Sheet
    {
        /// Null where the sheet doesn't name them.
        QString album;
        QString artist;
        QStringList trackNames;
    };

    /// `userInterface` must outlive the importer.
    explicit CueSheetTagImporter(UserInterface &userInterface, QObject *parent = nullptr);

    /// What the lines of a sheet say. Tracks begin with the text "TRACK 01 AUDIO" and nothing else, on
    /// purpose: other sheets have no track names.
    static Sheet parse(const QString &text);

    /// Asks for a sheet, announces its track names and returns its album and artist. Null when the person
    /// cancelled or the sheet couldn't be read, which they are told.
    std::shared_ptr<TagsObject> loadTagsFromCueSheet();
    std::shared_ptr<TagsObject> loadTagsFromCueSheet(const QString &path);

Q_SIGNALS:
    void kruvTrackNamesEnteredNotification(const QStringList &names);

private:
    UserInterface &m_userInterface;
};

} // namespace kruv
