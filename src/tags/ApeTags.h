// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <apetag.h>
#include <tfile.h>

namespace kruv {

/// Fills in what an APEv2 tag has: texts of one or several values, numbers with their totals ("3/12"),
/// pictures ("Cover Art (Front)": a file name, a zero byte, the picture), and items of any other name.
void readApe(const TagLib::APE::Tag &tag, TagsObject &record);

/// False where the tag would become larger than the formats' own tools read.
bool writeApe(TagLib::APE::Tag &tag, const TagsObject &record, bool writeEmptyTags);

/// Whether an item of this name is a person's own.
bool isCustomApeName(const QString &name);

/// Where a file's APE tag begins and how long it is; where one would go, before an ID3v1 tag, and 0, where
/// there is none. For files of which the tag library doesn't look for one.
struct ApeTagPlace
{
    long footer = 0;
    long start = 0;
    long length = 0;
};
ApeTagPlace findApeTag(TagLib::File &file);

} // namespace kruv
