// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/UserInterface.h"
#include "support/TaggedAudio.h"
#include "tags/BitmapData.h"
#include "tags/KruvCustomTagsPanel.h"

#include <QBuffer>

#include <gtest/gtest.h>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::picture;

TEST(TagsObject, EqualityKeepsAbsentAndEmptyApart)
{
    TagsObject a;
    TagsObject b;
    EXPECT_TRUE(a.isEqual(&a));
    EXPECT_TRUE(a.isEqual(&b));
    EXPECT_FALSE(a.isEqual(nullptr));
    EXPECT_TRUE(a.titleText().isNull());

    a.setTitleText(u""_s);
    EXPECT_FALSE(a.isEqual(&b));
    b.setTitleText(u""_s);
    EXPECT_TRUE(a.isEqual(&b));
    b.setTitleText(u" "_s);
    EXPECT_FALSE(a.isEqual(&b));
}

TEST(TagsObject, EveryTextButTheEncoderTakesPartInEquality)
{
    for (std::size_t field = 0; field < tagFieldCount; ++field) {
        TagsObject a;
        TagsObject b;
        a.setText(static_cast<TagField>(field), u"x"_s);
        b.setText(static_cast<TagField>(field), u"X"_s);
        EXPECT_EQ(a.isEqual(&b), static_cast<TagField>(field) == TagField::EncoderSettings) << field;
    }
    TagsObject a;
    TagsObject b;
    a.setCustomTagsDictionary({{u"MOOD"_s, u"calm"_s}});
    EXPECT_TRUE(a.isEqual(&b));
}

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

TEST(BitmapData, RefusesNoImage)
{
    try {
        getBitmapDataForImage({}, "PNG");
        FAIL() << "no exception";
    } catch (const std::invalid_argument &failure) {
        EXPECT_STREQ(failure.what(), "Invalid parameter not satisfying: nil != image");
    }
}

/// Only the panel of custom tags works: it types what the test says.
class TypingUserInterface : public UserInterface
{
public:
    CustomTagRows shown;
    CustomTagRows typed;

    CustomTagRows editCustomTags(const CustomTagRows &rows) override
    {
        shown = rows;
        return typed;
    }
    int ask(const QString &, const QString &, const QStringList &, int) override { return 0; }
    void alert(const QString &, const QString &, const QString &) override {}
    std::optional<QString> chooseFolder(const QString &) override { return {}; }
    QStringList chooseFiles(const QString &, const QString &) override { return {}; }
    std::optional<QString> savePath(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<QString> enterText(const QString &, const QString &, const QString &) override
    {
        return {};
    }
    std::optional<TrimCharsObject> trimCharacters() override { return {}; }
    void showStatusPanel() override {}
    void closeStatusPanel() override {}
    void scrollStatusPanelTo(int) override {}
    void openResultsWindow(const QString &, const QString &) override {}
    void setBadge(int) override {}
    bool notify(const QString &) override { return false; }
    void requestAttention() override {}
};

TEST(KruvCustomTagsPanel, RowsBecomeATrimmedMap)
{
    TypingUserInterface userInterface;
    KruvCustomTagsPanel panel(userInterface);
    userInterface.typed[0] = {u" A\n"_s, u"\t1 "_s};
    panel.runPanel();
    EXPECT_EQ(panel.customTagDictionary(), (TagsObject::CustomTags{{u"A"_s, u"1"_s}, {u""_s, u""_s}}));

    userInterface.typed[5] = {u"A"_s, u"2"_s};
    TagsObject record;
    record.setCustomTagsDictionary({{u"B"_s, u"3"_s}});
    panel.runPanelWithTags(&record);
    EXPECT_EQ(userInterface.shown[0].first, u" A\n"_s) << "rows keep what was typed";
    EXPECT_TRUE(userInterface.shown[1].first.isEmpty()) << "the record's tags are not put in";
    EXPECT_EQ(panel.customTagDictionary().value(u"A"_s), u"2"_s);
    EXPECT_EQ(panel.customTagDictionary().size(), 2);
}

TEST(KruvCustomTagsPanel, KeepsTagsBeyondItsRows)
{
    TypingUserInterface userInterface;
    KruvCustomTagsPanel panel(userInterface);
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
