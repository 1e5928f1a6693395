// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/ScriptedUserInterface.h"
#include "support/TaggedAudio.h"
#include "tabs/KruvCustomTagsPanel.h"
#include "tags/BitmapData.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::picture;

TEST(TagsObject, PicturesAreComparedAsImages)
{
    TagsObject decoded;
    TagsObject encoded;
    TagsObject broken;
    decoded.setAlbumArt(picture(Qt::red));
    encoded.setEncodedAlbumArt(getBitmapDataForImage(picture(Qt::red), "PNG"));
    broken.setEncodedAlbumArt("\x89PNG\r\n\x1a\nbroken");

    EXPECT_TRUE(decoded.isEqual(&encoded));
    EXPECT_TRUE(broken.albumArt().isNull());
    EXPECT_TRUE(broken.isEqual(std::make_unique<TagsObject>().get()));
    EXPECT_FALSE(broken.isEqual(&encoded));
    encoded.setAlbumArt(picture(Qt::blue));
    EXPECT_FALSE(decoded.isEqual(&encoded));
}

TEST(KruvCustomTagsPanel, RowsBecomeATrimmedMap)
{
    test::ScriptedUserInterface person;
    KruvCustomTagsPanel panel(person);
    UserInterface::CustomTagRows typed;
    typed[0] = {u" A\n"_s, u"\t1 "_s};
    person.customTagAnswers = {typed};
    panel.runPanel();
    EXPECT_EQ(panel.customTagDictionary(), (TagsObject::CustomTags{{u"A"_s, u"1"_s}, {u""_s, u""_s}}));

    typed[5] = {u"A"_s, u"2"_s};
    person.customTagAnswers = {typed};
    TagsObject record;
    record.setCustomTagsDictionary({{u"B"_s, u"3"_s}});
    panel.runPanelWithTags(&record);
    EXPECT_EQ(person.customTagRowsShown[0].first, u" A\n"_s) << "rows keep what was typed";
    EXPECT_TRUE(person.customTagRowsShown[1].first.isEmpty()) << "the record's tags are not put in";
    EXPECT_EQ(panel.customTagDictionary().value(u"A"_s), u"2"_s);
    EXPECT_EQ(panel.customTagDictionary().size(), 2);
}

TEST(KruvCustomTagsPanel, KeepsTagsBeyondItsRows)
{
    test::ScriptedUserInterface person;
    KruvCustomTagsPanel panel(person);
    TagsObject::CustomTags tags;
    for (int number = 0; number < 10; ++number) {
        tags.insert(u"KEY%1"_s.arg(number), QString::number(number));
    }
    panel.fillTags(nullptr);
    EXPECT_TRUE(panel.customTagDictionary().isEmpty());
    panel.fillTags(&tags);
    EXPECT_EQ(panel.customTagDictionary(), tags);
    EXPECT_EQ(panel.customTagNameText(1), u"KEY0"_s);
    EXPECT_EQ(panel.customTagValueText(8), u"7"_s);

    panel.clearTags();
    EXPECT_TRUE(panel.customTagNameText(8).isEmpty());
    EXPECT_EQ(panel.customTagDictionary().size(), 10);
}

} // namespace
} // namespace kruv
