// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4Genres.h"

#include <QList>

namespace kruv {

namespace {

/// Codes 1 to 126, in this order. The spellings are those that people's files and lists have by now.
constexpr QStringView genryTypeDict =
    u"Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hop-Hop|Jazz|Metal|New Age|Oldies|Other|Pop|"
    u"R&B|Rap|Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|Soundtrack|Euro-Techno|"
    u"Ambient|Trip-Hop|Vocal|Jazz+Funk|Fusion|Trance|Classical|Instrumental|Acid|House|Game|"
    u"Sound Clip|Gospel|Noise|AlternRock|Bass|Soul|Punk|Space|Meditative|Instrumental Pop|"
    u"Instrumental Rock|Ethnic|Gothic|Darkwave|Techno-Industrial|Electronic|Pop-Folk|Eurodance|Dream|"
    u"Southern Rock|Comedy|Cult|Gangsta|Top 40|Christian Rap|Pop/Funk|Jungle|Native American|Cabaret|"
    u"New Wave|Psychedelic|Rave|Showtunes|Trailer|Lo-Fi|Tribal|Acid Punk|Acid Jazz|Polka|Retro|"
    u"Musical|Rock & Roll|Hard Rock|Folk|Folk-Rock|National Folk|Swing|Fast Fusion|Bebob|Latin|"
    u"Revival|Celtic|Bluegrass|Avantgarde|Gothic Rock|Progresive Rock|Psychedelic Rock|SYMPHONIC_ROCK|"
    u"Slow Rock|Big Band|Chorus|Easy Listening|Acoustic|Humor|Speech|Chason|Opera|Chamber Music|"
    u"Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|Slow Jam|Club|Tango|Samba|Folklore|Ballad|"
    u"Power Ballad|Rhythmic Soul|Freestyle|Duet|Punk Rock|Drum Solo|A capella|Euro-House|Dance Hall";
constexpr quint16 noGenre = 255;

} // namespace

std::optional<QString> mp4GenreText(quint16 code)
{
    if (code == 0) {
        return QStringLiteral("");
    }
    if (code == noGenre) {
        return QStringLiteral("none");
    }
    const auto names = genryTypeDict.split(u'|');
    if (code > names.size()) {
        return {};
    }
    return names[code - 1].toString();
}

} // namespace kruv
