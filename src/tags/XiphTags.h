// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <flacfile.h>
#include <xiphcomment.h>

namespace kruv {

/// Adds the fields whose text isn't UTF-8, which the library leaves out and would drop on saving. They are
/// taken for Latin-1, in which some programs wrote them.
void takeLatin1Fields(TagLib::IOStream &stream, TagLib::Ogg::XiphComment &comment);

/// Whether a field of this name is a person's own.
bool isCustomXiphName(const QString &name);

/// Vorbis comment fields and picture blocks of a FLAC file.
void readXiph(TagLib::FLAC::File &file, TagsObject &record);

/// False when the tags don't fit into FLAC metadata blocks (16 MiB each). Sets `date` to what the file's DATE
/// field is to be.
bool writeXiph(TagLib::FLAC::File &file, const TagsObject &record, bool writeEmptyTags, QString &date);

/// The same for the comment of an Ogg file, which holds its pictures too and has no limit of its own.
void readOggXiph(TagLib::Ogg::XiphComment &comment, TagsObject &record);
bool writeOggXiph(TagLib::Ogg::XiphComment &comment, const TagsObject &record, bool writeEmptyTags);

} // namespace kruv
