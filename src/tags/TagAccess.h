// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <memory>

namespace kruv {

class TagsObject;

/// How the tags of one kind of file are read and written, and what they hold.
struct TagAccess
{
    std::shared_ptr<TagsObject> (*read)(const QString &path);
    /// See TagLibTagsHelper and AACTagsHelper: false and exceptions are theirs, and the file is then as it
    /// was. Not for the main thread.
    bool (*write)(const QString &path, const TagsObject &record, bool writeEmptyTags);
    /// Whether files are read by this when several are compared.
    bool isCompared = true;
    /// Whether a tag of this name, beside the record's fields, is held; null where none is.
    bool (*holdsCustomTag)(const QString &name) = nullptr;
    /// Whether there is room for one picture of each kind only.
    bool holdsOnePictureOfAKind = false;
    /// Takes out the room that is kept for later tags; null where a file has none.
    void (*removePadding)(const QString &path) = nullptr;
};

namespace TagAccesses {

extern const TagAccess flac;
extern const TagAccess mp3;
extern const TagAccess monkeysAudio;
extern const TagAccess wavpack;
extern const TagAccess tta;
extern const TagAccess mp4;
extern const TagAccess aiff;
extern const TagAccess vorbis;
extern const TagAccess opus;

} // namespace TagAccesses
} // namespace kruv
