// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <apetag.h>

namespace kruv {

/// Whether an item of this name, in any case, is a picture.
bool isApePictureName(const QString &name);

/// The kind that the record's own picture gets: the front cover, where no other one is that.
PictureType apePictureType(const TagsObject &record);

/// The front cover, else the first picture that there is, becomes the record's own.
void readApePictures(const TagLib::APE::Tag &tag, TagsObject &record);

/// Pictures go in as the bytes they came as. There is room for one of each kind: one that is there already is
/// replaced by the record's own picture, and stays where another one would take its place.
void writeApePictures(TagLib::APE::Tag &tag, const TagsObject &record, bool writeEmptyTags);

} // namespace kruv
