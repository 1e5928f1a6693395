// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <id3v2tag.h>

namespace kruv {

/// How MP3 and AIFF files differ in their ID3v2 tags.
struct Id3v2Dialect
{
    /// Of the frames TPE2, TCOM, TRCK and TPOS. Text that Latin-1 can't hold is stored as UTF-8 all the same.
    TagLib::String::Type textEncoding;
    /// The date as one TDRC frame, else as TYER and TDAT.
    bool dateInOneFrame;
};
inline constexpr Id3v2Dialect mp3Dialect{TagLib::String::UTF8, true};
inline constexpr Id3v2Dialect aiffDialect{TagLib::String::Latin1, false};

/// Makes UTF-8 the encoding of every text frame that the library builds from now on.
void useUtf8InId3v2();

/// Fills the record. `generic` is the file's tag as a whole, of which `tag` is a part.
void readId3v2(const TagLib::Tag &generic, TagLib::ID3v2::Tag &tag, TagsObject &record);

/// The values of the texts that have several.
QMap<TagField, QStringList> severalId3v2Values(const TagLib::ID3v2::Tag &tag);
/// Makes them several again where the text that was written is those values joined.
void writeSeveralId3v2Values(TagLib::ID3v2::Tag &tag, const QMap<TagField, QStringList> &values);

void writeId3v2(TagLib::Tag &generic, TagLib::ID3v2::Tag &tag, const TagsObject &record,
                const Id3v2Dialect &dialect, bool writeEmptyTags);

} // namespace kruv
