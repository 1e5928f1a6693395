// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <array>

namespace kruv {

/// How the command line names a text field.
struct TagsFlag
{
    const char *name; // without the dashes
    TagField field;
    const char *help;
};

/// In the order in which people read them.
inline constexpr std::array tagsFlags{
    TagsFlag{"title", TagField::Title, "Title"},
    TagsFlag{"artist", TagField::Artist, "Artist"},
    TagsFlag{"album-artist", TagField::AlbumArtist, "Artist of the whole album"},
    TagsFlag{"album", TagField::Album, "Album"},
    TagsFlag{"year", TagField::Year, "Year, four digits"},
    TagsFlag{"month", TagField::Month, "Month, 1 to 12; counts together with a day"},
    TagsFlag{"day", TagField::Day, "Day, 1 to 31"},
    TagsFlag{"genre", TagField::Genre, "Genre"},
    TagsFlag{"composer", TagField::Composer, "Composer"},
    TagsFlag{"comment", TagField::Comment, "Comment"},
    TagsFlag{"track", TagField::Track, "Track number"},
    TagsFlag{"track-total", TagField::TrackTotal, "Number of tracks"},
    TagsFlag{"disc", TagField::Disc, "Disc number"},
    TagsFlag{"disc-total", TagField::DiscTotal, "Number of discs"},
};

} // namespace kruv
