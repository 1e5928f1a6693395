// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tags/TagsObject.h"

#include <QtGlobal>

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
    TagsFlag{"title", TagField::Title, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Title")},
    TagsFlag{"artist", TagField::Artist, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Artist")},
    TagsFlag{"album-artist", TagField::AlbumArtist,
             QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Artist of the whole album")},
    TagsFlag{"album", TagField::Album, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Album")},
    TagsFlag{"year", TagField::Year, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Year, four digits")},
    TagsFlag{"month", TagField::Month,
             QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Month, 1 to 12; counts together with a day")},
    TagsFlag{"day", TagField::Day, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Day, 1 to 31")},
    TagsFlag{"genre", TagField::Genre, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Genre")},
    TagsFlag{"composer", TagField::Composer, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Composer")},
    TagsFlag{"comment", TagField::Comment, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Comment")},
    TagsFlag{"track", TagField::Track, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Track number")},
    TagsFlag{"track-total", TagField::TrackTotal, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Number of tracks")},
    TagsFlag{"disc", TagField::Disc, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Disc number")},
    TagsFlag{"disc-total", TagField::DiscTotal, QT_TRANSLATE_NOOP("kruv::TagsSetVerb", "Number of discs")},
};

} // namespace kruv
