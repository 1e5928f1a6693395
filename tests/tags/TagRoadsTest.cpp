// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/TagLosses.h"
#include "support/TaggedAudio.h"
#include "tags/BitmapData.h"
#include "tags/TagAccess.h"
#include "tags/TagText.h"

#include <QFile>

#include <aifffile.h>
#include <gtest/gtest.h>
#include <mp4file.h>
#include <span>
#include <unsynchronizedlyricsframe.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::AudioFolder;
using test::readFile;

struct Kind
{
    const char *extension;
    const TagAccess *access;
    /// Whether its pictures have types.
    bool hasPictureTypes = true;
};
const Kind kinds[] = {
    {"flac", &TagAccesses::flac},      {"wv", &TagAccesses::wavpack}, {"ape", &TagAccesses::monkeysAudio},
    {"tta", &TagAccesses::tta},        {"mp3", &TagAccesses::mp3},    {"aiff", &TagAccesses::aiff},
    {"m4a", &TagAccesses::mp4, false}, {"ogg", &TagAccesses::vorbis},
};

/// Text in every field, several values in some, two pictures, and a tag of another name.
std::shared_ptr<TagsObject> richRecord()
{
    auto record = test::fullRecord();
    record->setValues(TagField::Artist, {u"Ann & Bob"_s, u"\u010capek"_s});
    record->setValues(TagField::Composer, {u"C. One"_s, u"C. Two"_s, u"C. Three"_s});
    record->setValues(TagField::Genre, {u"Folk"_s, u"Field recording"_s});
    record->setTrackText(u"3"_s);
    record->setTrackTotalText(u"9"_s);
    record->setDiscText(u"1"_s);
    record->setDiscTotalText(u"2"_s);
    const auto art = [](Qt::GlobalColor color) {
        return std::make_shared<const AlbumArt>(getBitmapDataForImage(test::picture(color), "PNG"));
    };
    constexpr auto back = static_cast<PictureType>(4);
    record->setPictures(
        {{PictureType::FrontCover, {}, art(Qt::red)}, {back, u"seen from behind"_s, art(Qt::blue)}});
    record->setCustomValues(u"MOOD"_s, {u"calm"_s, u"late"_s});
    return record;
}

void expectSame(const TagsObject &got, const TagsObject &wanted, const Kind &target)
{
    for (std::size_t index = 0; index < tagFieldCount; ++index) {
        const auto field = static_cast<TagField>(index);
        if (field != TagField::EncoderSettings) {
            EXPECT_EQ(got.values(field), wanted.values(field)) << "field " << index;
        }
    }
    EXPECT_TRUE(got.hasSameAlbumArt(wanted));
    ASSERT_EQ(got.otherPictures().size(), 1);
    EXPECT_TRUE(got.otherPictures()[0].art->isSameAs(*wanted.otherPictures()[0].art));
    if (target.hasPictureTypes) {
        EXPECT_EQ(got.otherPictures()[0].type, wanted.otherPictures()[0].type);
    }
    const bool namesLoss = TagLosses::of(wanted, target.access).customTags;
    if (!wanted.customTagsDictionary().isEmpty() && !namesLoss) {
        EXPECT_EQ(got.customValues(u"MOOD"_s), wanted.customValues(u"MOOD"_s));
    }
    EXPECT_EQ(namesLoss, !wanted.customTagsDictionary().isEmpty() && !target.access->holdsCustomTag);
}

class TagRoads : public testing::Test
{
protected:
    QString audio(const Kind &kind) const { return folder.audio(QString::fromLatin1(kind.extension)); }

    const AudioFolder folder = {};
};

TEST_F(TagRoads, FromEveryFormatToEveryOtherAllArrivesOrIsNamed)
{
    for (const Kind &source : kinds) {
        const QString from = audio(source);
        ASSERT_TRUE(source.access->write(from, *richRecord(), false)) << source.extension;
        const auto record = source.access->read(from);
        for (const Kind &target : kinds) {
            SCOPED_TRACE(std::string(source.extension) + " to " + target.extension);
            const QString to = audio(target);
            ASSERT_TRUE(target.access->write(to, *record, false));
            expectSame(*target.access->read(to), *record, target);
            const qint64 once = QFile(to).size();
            ASSERT_TRUE(target.access->write(to, *target.access->read(to), false));
            EXPECT_LE(std::abs(QFile(to).size() - once), 1 << 13) << "nothing is there twice";
            expectSame(*target.access->read(to), *record, target);
        }
    }
}

TEST_F(TagRoads, NumbersAndDatesAsOtherProgramsWriteThemArrive)
{
    TagsObject record;
    record.setTrackText(u"3/12"_s);
    record.setDiscText(u"1/2"_s);
    record.setUnparsedDate(u"2004-05-06T07:08"_s);
    for (const Kind &kind : kinds) {
        SCOPED_TRACE(kind.extension);
        const QString path = audio(kind);
        ASSERT_TRUE(kind.access->write(path, record, false));
        const auto held = kind.access->read(path);
        EXPECT_EQ(numberAndTotal(*held, TagField::Track, TagField::TrackTotal), std::pair(u"3"_s, u"12"_s));
        EXPECT_EQ(numberAndTotal(*held, TagField::Disc, TagField::DiscTotal), std::pair(u"1"_s, u"2"_s));
        EXPECT_TRUE(joinedDate(*held).startsWith(u"2004-05-06")) << qUtf8Printable(joinedDate(*held));
    }
}

TEST_F(TagRoads, WhatARecordCannotCarryIsNamed)
{
    const auto isLost = [](const QString &path, const Kind &kind) {
        return TagLosses::of(*kind.access->read(path), &TagAccesses::wavpack).customTags;
    };
    const Kind &aiff = kinds[5];
    const QString lyrics = audio(aiff);
    EXPECT_FALSE(isLost(lyrics, aiff));
    TagLib::RIFF::AIFF::File tagged(QFile::encodeName(lyrics).constData());
    tagged.tag()->addFrame(std::make_unique<TagLib::ID3v2::UnsynchronizedLyricsFrame>().release());
    ASSERT_TRUE(tagged.save());
    EXPECT_TRUE(isLost(lyrics, aiff));

    const Kind &m4a = kinds[6];
    const QString path = audio(m4a);
    TagLib::MP4::File file(QFile::encodeName(path).constData());
    file.tag()->setItem("tmpo", 0);
    file.tag()->setItem("cpil", false);
    file.tag()->setItem("----:com.apple.iTunes:iTunNORM", TagLib::StringList(" 0000"));
    ASSERT_TRUE(file.save());
    EXPECT_FALSE(isLost(path, m4a)) << "what says nothing of the music";
    file.tag()->setItem("----:com.apple.iTunes:ISRC", TagLib::StringList("US1"));
    ASSERT_TRUE(file.save());
    EXPECT_TRUE(isLost(path, m4a));
}

TEST_F(TagRoads, SeveralValuesThatAreShownAsOneTextOutliveTheEditor)
{
    for (const Kind &kind : kinds) {
        const QString path = audio(kind);
        ASSERT_TRUE(kind.access->write(path, *richRecord(), false));
        for (const bool writeEmptyTags : {false, true}) {
            SCOPED_TRACE(std::string(kind.extension) + (writeEmptyTags ? " all" : ""));
            TagsObject shown;
            const auto before = kind.access->read(path);
            for (std::size_t index = 0; index < tagFieldCount; ++index) {
                shown.setText(static_cast<TagField>(index), before->text(static_cast<TagField>(index)));
            }
            shown.setTitleText(u"New"_s);
            ASSERT_TRUE(kind.access->write(path, shown, writeEmptyTags));
            EXPECT_EQ(kind.access->read(path)->titleText(), u"New"_s);
            EXPECT_EQ(kind.access->read(path)->values(TagField::Composer).size(), 3);
            EXPECT_EQ(kind.access->read(path)->values(TagField::Artist).size(), 2);
        }
    }
}

TEST_F(TagRoads, WhatOtherProgramsReadInApeTags)
{
    const QString path = audio(kinds[1]);
    ASSERT_TRUE(kinds[1].access->write(path, *richRecord(), false));
    const QByteArray tags = test::toolOutput(u"wvunpack"_s, {u"-ss"_s, path});
    for (const char *line : {"3/9", "1/2", "item (png)", "Cover Art (Back)", "Ann & Bob", "Album Artist",
                             "2004-05-06", "MOOD"}) {
        EXPECT_TRUE(tags.contains(line)) << line << " in\n" << tags.constData();
    }
    const QByteArray front = test::toolOutput(u"wvunpack"_s, {u"-qx"_s, u"Cover Art (Front)"_s, path});
    EXPECT_TRUE(front.contains(richRecord()->picture()->encoded()));
    const QString tta = audio(kinds[3]);
    ASSERT_TRUE(kinds[3].access->write(tta, *richRecord(), false));
    EXPECT_EQ(test::probedTags(tta).value(u"composer"_s), u"C. One"_s);
}

TEST_F(TagRoads, TooLargeAPictureLeavesTheFileAsItWas)
{
    TagsObject record;
    record.setTitleText(u"T"_s);
    record.setEncodedAlbumArt(getBitmapDataForImage(test::picture(Qt::red), "PNG") +
                              QByteArray(64 << 20, 'x'));
    for (const Kind &kind : std::span(kinds).first(4)) {
        const QString path = audio(kind);
        const QByteArray before = readFile(path);
        EXPECT_FALSE(kind.access->write(path, record, false)) << kind.extension;
        EXPECT_EQ(readFile(path), before);
    }
}

} // namespace
} // namespace kruv
