// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/NamePattern.h"

#include "support/QtPrinters.h"
#include "tags/TagsObject.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace kruv {

using namespace Qt::Literals::StringLiterals;

namespace {

struct Tag
{
    TagField field;
    QString text;
};

QString nameOf(const QString &pattern, const std::vector<Tag> &tags)
{
    TagsObject record;
    for (const Tag &tag : tags) {
        record.setText(tag.field, tag.text);
    }
    return NamePattern(pattern).path(record, u"/music/My Set/d1t01.wav"_s, u"flac"_s);
}

} // namespace

TEST(NamePattern, MakesNamesOfTags)
{
    using enum TagField;
    const QString whole = u"{albumartist}/{album} ({year})/{disc}-{track:02} {title}"_s;
    const std::vector<Tag> full{{Artist, u"A"_s}, {Album, u"B"_s}, {Year, u"1999"_s},
                                {Disc, u"2/3"_s}, {Track, u"7"_s}, {Title, u"C"_s}};
    struct Case
    {
        QString pattern;
        std::vector<Tag> tags;
        QString name;
    };
    const std::vector<Case> cases{
        {whole, full, u"A/B (1999)/2-07 C.flac"_s},
        {whole, {}, u"Unknown Artist/Unknown Album/d1t01.flac"_s},
        {whole,
         {{AlbumArtist, u"V"_s}, {Artist, u"A"_s}, {Track, u"012"_s}},
         u"V/Unknown Album/12 d1t01.flac"_s},
        {u"{artist}/{track}"_s, {{AlbumArtist, u"V"_s}, {Track, u"03/12"_s}}, u"V/03.flac"_s},
        {u"{track:02} of {tracktotal:03}"_s, {{Track, u"3/12"_s}}, u"03 of 012.flac"_s},
        {u"{track:02}"_s, {{Track, u"A1"_s}}, u"A1.flac"_s},
        // What only served an empty field goes with it.
        {u"d{disc}t{track:02} {title}"_s, {{Track, u"1"_s}, {Title, u"x"_s}}, u"t01 x.flac"_s},
        {u"CD{disc}/{title} - {comment}"_s, {{Title, u"x"_s}}, u"x.flac"_s},
        {u"{title} - {composer} - {comment}"_s, {{Title, u"x"_s}}, u"x.flac"_s},
        {u"{title} - {composer} - {genre}"_s, {{Title, u"x"_s}, {Genre, u"y"_s}}, u"x - y.flac"_s},
        {u"{title} ({year}-{month}) [{genre} {day}] - {comment}"_s,
         {{Title, u"x"_s}, {Year, u"1"_s}},
         u"x (1).flac"_s},
        {u"{title} ([{year}]) {genre}"_s, {{Title, u"x"_s}, {Genre, u"y"_s}}, u"x y.flac"_s},
        {u"({disc}) - {title}"_s, {{Title, u"x"_s}}, u"x.flac"_s},
        {u"{title} ({year})"_s, {{Title, u"() - ."_s}}, u"() - ..flac"_s}, // its own stay
        {u"{genre}"_s, {}, u"d1t01.flac"_s},
        {u"/{genre}//{title}"_s, {{Title, u"x"_s}}, u"x.flac"_s},
        {u"{{{title}}} [{ext}] {folder}, {name}"_s, {{Title, u"x"_s}}, u"{x} [flac] My Set, d1t01.flac"_s},
        // Texts that are no names.
        {u"{artist}/{title}"_s,
         {{Artist, u"AC/DC"_s}, {Title, u"a\nb\t\u0007 \u0000c"_s}},
         u"AC-DC/a b c.flac"_s},
        {u"{artist}/{album}/{title}"_s,
         {{Artist, u".."_s}, {Album, u" . "_s}, {Title, u"../../x"_s}},
         u"_./_/_.-..-x.flac"_s},
        {u"../{title}"_s, {{Title, u"  \u202etxt.x "_s}}, u"_./txt.x.flac"_s},
        {u"{artist}/{title}"_s, {{Artist, u" "_s}, {Title, u"\u0001"_s}}, u"Unknown Artist/d1t01.flac"_s},
        {u"{album}/{title}"_s,
         {{Album, u"\u00e9"_s.repeated(300)}, {Title, u"t"_s.repeated(300)}},
         u"\u00e9"_s.repeated(127) + u'/' + u"t"_s.repeated(250) + u".flac"_s},
        {u"{title}"_s,
         {{Title, u"\U0001F468\u200d\U0001F469 \u5b57"_s}},
         u"\U0001F468\u200d\U0001F469 \u5b57.flac"_s},
    };
    for (const Case &each : cases) {
        EXPECT_EQ(nameOf(each.pattern, each.tags), each.name) << qPrintable(each.pattern);
    }
    EXPECT_TRUE(NamePattern(u"{name} {title}"_s).readsTags());
    EXPECT_FALSE(NamePattern(u"{folder} {name}.{ext}"_s).readsTags());
}

TEST(NamePattern, RefusesWhatIsNone)
{
    for (const QString &text : {u""_s, u"{artist}/"_s, u"{titel}"_s, u"{title"_s, u"{}"_s, u"{track:x}"_s,
                                u"{track:}"_s, u"{track:0}"_s, u"{track:02:2}"_s}) {
        EXPECT_THROW(NamePattern{text}, std::runtime_error) << qPrintable(text);
    }
}

} // namespace kruv
