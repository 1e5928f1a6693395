// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <tag.h>

namespace kruv {

/// Title, artist, album, comment and genre through the library's generic interface.
void readGenericTexts(const TagLib::Tag &tag, TagsObject &record);

/// Writes one of those five into `tag`. Text that `current` has already is left alone: it may be several
/// values joined. `current` is the part of `tag` that other programs read first.
void writeGenericText(TagLib::Tag &tag, const TagLib::Tag &current, const TagsObject &record, TagField field,
                      bool writeEmptyTags);

/// All that the generic interface has: those five, year and track.
void readGenericTag(const TagLib::Tag &tag, TagsObject &record);
void writeGenericTag(TagLib::Tag &tag, const TagLib::Tag &current, const TagsObject &record,
                     bool writeEmptyTags);

} // namespace kruv
