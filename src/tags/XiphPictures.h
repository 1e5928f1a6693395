// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <flacfile.h>
#include <flacpicture.h>
#include <xiphcomment.h>

namespace kruv {

/// The first picture is the record's own, the others are beside it.
void readXiphPictures(const TagLib::List<TagLib::FLAC::Picture *> &pictures, TagsObject &record);

/// Adds the record's pictures that are not there already: to the blocks of a FLAC file, or the comment of an
/// Ogg file. False where one is too large for a block.
bool addXiphPictures(TagLib::FLAC::File &file, const TagsObject &record);
bool addXiphPictures(TagLib::Ogg::XiphComment &comment, const TagsObject &record);

} // namespace kruv
