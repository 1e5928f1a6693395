// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/Mp4Genres.h"

#include <array>

namespace kruv {

namespace {

/// Codes 1 to 126, in this order. The spellings are those that people's files and lists have by now.
constexpr std::array<QStringView, 126> genryTypeDict{u"Blues",
                                                     u"Classic Rock",
                                                     u"Country",
                                                     u"Dance",
                                                     u"Disco",
                                                     u"Funk",
                                                     u"Grunge",
                                                     u"Hop-Hop",
                                                     u"Jazz",
                                                     u"Metal",
                                                     u"New Age",
                                                     u"Oldies",
                                                     u"Other",
                                                     u"Pop",
                                                     u"R&B",
                                                     u"Rap",
                                                     u"Reggae",
                                                     u"Rock",
                                                     u"Techno",
                                                     u"Industrial",
                                                     u"Alternative",
                                                     u"Ska",
                                                     u"Death Metal",
                                                     u"Pranks",
                                                     u"Soundtrack",
                                                     u"Euro-Techno",
                                                     u"Ambient",
                                                     u"Trip-Hop",
                                                     u"Vocal",
                                                     u"Jazz+Funk",
                                                     u"Fusion",
                                                     u"Trance",
                                                     u"Classical",
                                                     u"Instrumental",
                                                     u"Acid",
                                                     u"House",
                                                     u"Game",
                                                     u"Sound Clip",
                                                     u"Gospel",
                                                     u"Noise",
                                                     u"AlternRock",
                                                     u"Bass",
                                                     u"Soul",
                                                     u"Punk",
                                                     u"Space",
                                                     u"Meditative",
                                                     u"Instrumental Pop",
                                                     u"Instrumental Rock",
                                                     u"Ethnic",
                                                     u"Gothic",
                                                     u"Darkwave",
                                                     u"Techno-Industrial",
                                                     u"Electronic",
                                                     u"Pop-Folk",
                                                     u"Eurodance",
                                                     u"Dream",
                                                     u"Southern Rock",
                                                     u"Comedy",
                                                     u"Cult",
                                                     u"Gangsta",
                                                     u"Top 40",
                                                     u"Christian Rap",
                                                     u"Pop/Funk",
                                                     u"Jungle",
                                                     u"Native American",
                                                     u"Cabaret",
                                                     u"New Wave",
                                                     u"Psychedelic",
                                                     u"Rave",
                                                     u"Showtunes",
                                                     u"Trailer",
                                                     u"Lo-Fi",
                                                     u"Tribal",
                                                     u"Acid Punk",
                                                     u"Acid Jazz",
                                                     u"Polka",
                                                     u"Retro",
                                                     u"Musical",
                                                     u"Rock & Roll",
                                                     u"Hard Rock",
                                                     u"Folk",
                                                     u"Folk-Rock",
                                                     u"National Folk",
                                                     u"Swing",
                                                     u"Fast Fusion",
                                                     u"Bebob",
                                                     u"Latin",
                                                     u"Revival",
                                                     u"Celtic",
                                                     u"Bluegrass",
                                                     u"Avantgarde",
                                                     u"Gothic Rock",
                                                     u"Progresive Rock",
                                                     u"Psychedelic Rock",
                                                     u"SYMPHONIC_ROCK",
                                                     u"Slow Rock",
                                                     u"Big Band",
                                                     u"Chorus",
                                                     u"Easy Listening",
                                                     u"Acoustic",
                                                     u"Humor",
                                                     u"Speech",
                                                     u"Chason",
                                                     u"Opera",
                                                     u"Chamber Music",
                                                     u"Sonata",
                                                     u"Symphony",
                                                     u"Booty Bass",
                                                     u"Primus",
                                                     u"Porn Groove",
                                                     u"Satire",
                                                     u"Slow Jam",
                                                     u"Club",
                                                     u"Tango",
                                                     u"Samba",
                                                     u"Folklore",
                                                     u"Ballad",
                                                     u"Power Ballad",
                                                     u"Rhythmic Soul",
                                                     u"Freestyle",
                                                     u"Duet",
                                                     u"Punk Rock",
                                                     u"Drum Solo",
                                                     u"A capella",
                                                     u"Euro-House",
                                                     u"Dance Hall"};
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
    if (code > genryTypeDict.size()) {
        return {};
    }
    return genryTypeDict[code - 1U].toString();
}

} // namespace kruv
