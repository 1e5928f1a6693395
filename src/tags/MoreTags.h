// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <apetag.h>
#include <id3v2tag.h>
#include <mp4tag.h>
#include <xiphcomment.h>

/// Whether a tag says more of the music than a TagsObject can carry to another file: lyrics in ID3v2, say.
/// What encoders and players note down for themselves does not count.
namespace kruv::MoreTags {

bool isIn(const TagLib::ID3v2::Tag &tag);
bool isIn(const TagLib::MP4::Tag &tag);
bool isIn(const TagLib::APE::Tag &tag);
bool isIn(const TagLib::Ogg::XiphComment &comment);

} // namespace kruv::MoreTags
