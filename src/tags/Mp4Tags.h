// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/Mp4Atom.h"
#include "tags/TagsObject.h"

#include <QByteArrayList>

#include <mp4tag.h>
#include <optional>

namespace kruv {

/// Fields and the picture as the tag library has them. The genre needs readMp4Genre() too.
void readMp4Tag(const TagLib::MP4::Tag &tag, TagsObject &record);

/// The genre as the item list in the index has it: its text, else the name of its numeric code. Absent
/// without either.
QString readMp4Genre(Mp4Atom &moov);

/// The items to be found in a file after writing: those of these names are the tag library's, all others
/// those that the file had.
struct Mp4WrittenItems
{
    QByteArrayList names;
    /// Everything was cleared first, so that nothing stays but what belongs to the encoding.
    bool isFresh = false;
};

/// Writes the record into the tag, which isn't saved. Nothing when the picture can't be encoded.
std::optional<Mp4WrittenItems> writeMp4Tag(TagLib::MP4::Tag &tag, const TagsObject &record,
                                           bool writeEmptyTags);

/// Brings what the tag library saved, in the index `saved`, into the file's own index. The library knows the
/// items that it lists and would drop or change others; this way an item not written stays as it is, byte for
/// byte and in its place.
void mergeMp4Items(Mp4Atom &moov, Mp4Atom &saved, const Mp4WrittenItems &written);

} // namespace kruv
