// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TaggedAudio.h"
#include "tags/AACTagsHelper.h"
#include "tags/Mp4ChunkOffsets.h"
#include "tags/Mp4File.h"
#include "tags/Mp4Genres.h"
#include "tags/StagedFileStream.h"

#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::readFile;

QByteArray atom(const QByteArray &name, const QByteArray &content)
{
    QByteArray size(4, '\0');
    size[2] = static_cast<char>((content.size() + 8) / 256);
    size[3] = static_cast<char>((content.size() + 8) % 256);
    return size + name + content;
}

QByteArray item(const QByteArray &name, char kind, const QByteArray &value)
{
    return atom(name, atom("data", QByteArray(3, '\0') + kind + QByteArray(4, '\0') + value));
}

class Mp4Tags : public testing::Test
{
protected:
    /// A second of music made by ffmpeg with these arguments.
    QString audio(const QStringList &arguments = {u"-c:a"_s, u"aac"_s}) const
    {
        QString path = folder.file(u"a b'%1\n.m4a"_s);
        test::toolOutput(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s, u"-f"_s, u"lavfi"_s, u"-i"_s,
                                                  u"anoisesrc=d=1"_s} +
                                          arguments + QStringList{u"file:"_s + path});
        return path;
    }

    /// Edits the index of the file before it is tagged.
    void edit(const QString &path, const std::function<void(Mp4Atom &)> &change) const
    {
        StagedFileStream stream(path);
        Mp4File file(stream);
        change(file.moov());
        file.optimize();
        ASSERT_TRUE(stream.commitToNewFile());
    }

    const test::TemporaryFolder folder;
    const AACTagsHelper helper{};
};

TEST_F(Mp4Tags, EveryLayoutKeepsFieldsAndSamplesAndBecomesCompact)
{
    const QStringList layouts[] = {
        {u"-c:a"_s, u"alac"_s},
        {u"-c:a"_s, u"aac"_s, u"-movflags"_s, u"+faststart"_s},
        {u"-c:a"_s, u"aac"_s, u"-movflags"_s, u"+frag_keyframe+empty_moov"_s, u"-frag_duration"_s,
         u"200000"_s},
        {u"-f"_s, u"lavfi"_s, u"-i"_s, u"testsrc=d=1:s=64x64"_s, u"-c:v"_s, u"mpeg4"_s, u"-f"_s, u"mov"_s},
    };
    const auto record = test::fullRecord();
    for (const QStringList &layout : layouts) {
        const QString path = audio(layout);
        const QByteArray digest = test::decodedDigest(path);
        ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0640), 0);
        for (const bool writeEmptyTags : {false, true}) {
            ASSERT_TRUE(helper.writeTagsForFile(path, *record, writeEmptyTags, false));
            EXPECT_TRUE(helper.tagsForFile(path)->isEqualToTagsObject(*record));
        }
        ASSERT_FALSE(digest.isEmpty());
        EXPECT_EQ(test::decodedDigest(path), digest);
        EXPECT_EQ(test::probedTags(path).value(u"title"_s), record->titleText());
        EXPECT_EQ(test::probedTags(path).value(u"track"_s), u"3/12"_s);
        EXPECT_EQ(QFileInfo(path).permissions() & QFile::Permissions(0x777), QFile::Permissions(0x640));
        const QByteArray bytes = readFile(path);
        EXPECT_LT(bytes.indexOf("moov"), bytes.indexOf("mdat"));
        EXPECT_FALSE(bytes.left(bytes.indexOf("mdat")).contains("free"));
    }
}

TEST_F(Mp4Tags, WhatIsNotWrittenStaysAsItIs)
{
    const QString path = audio();
    ASSERT_TRUE(helper.writeTagsForFile(path, *test::fullRecord(), false, false));
    const QByteArray delay = item("----", 1, "iTunSMPB 0840");
    const QList<QByteArray> strange{item("zzzz", 0, "\1\2\3"), item("----", 0, "first"),
                                    item("----", 1, "second"),
                                    item("stik", 21, QByteArray("\0\0\0\2", 4)), // wider than usual
                                    delay};
    edit(path, [&](Mp4Atom &moov) {
        Mp4Atom &items = *moov.find({"udta", "meta", "ilst"});
        std::erase_if(items.children, [](const Mp4Atom &each) { return each.name == "\251gen"; });
        items.add(Mp4Atom::parse(item("gnre", 0, QByteArray("\0\10", 2))));
        for (const QByteArray &bytes : strange) {
            items.add(Mp4Atom::parse(bytes));
        }
    });
    EXPECT_EQ(helper.tagsForFile(path)->genreText(), u"Hop-Hop"_s);

    TagsObject record;
    record.setTitleText(u"New"_s);
    record.setTrackTotalText(u"9"_s);
    record.setAlbumArt(test::picture(Qt::blue));
    ASSERT_TRUE(helper.writeTagsForFile(path, record, false, false));
    EXPECT_TRUE(readFile(path).contains(strange.join()));
    const auto result = helper.tagsForFile(path);
    EXPECT_EQ(result->titleText(), u"New"_s);
    EXPECT_EQ(result->artistText(), test::fullRecord()->artistText());
    EXPECT_EQ(result->trackText() + u'/' + result->trackTotalText(), u"/9"_s);
    EXPECT_EQ(result->genreText(), u"Hop-Hop"_s);
    EXPECT_EQ(result->albumArt().pixelColor(0, 0), QColor(Qt::blue));

    record.setGenreText(u"Polka"_s);
    ASSERT_TRUE(helper.writeTagsForFile(path, record, false, false));
    EXPECT_FALSE(readFile(path).contains("gnre"));
    ASSERT_TRUE(helper.writeTagsForFile(path, TagsObject(), true, false));
    edit(path, [&](Mp4Atom &moov) {
        const auto &items = moov.find({"udta", "meta", "ilst"})->children;
        ASSERT_EQ(items.size(), 2U);
        EXPECT_EQ(items[0].name, "\251too");
        EXPECT_EQ(items[1].bytes, delay);
    });
}

TEST_F(Mp4Tags, ChunksBeyondFourGigabytesGetWideOffsets)
{
    const QString path = audio();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    // The media atom begins below 4 GiB and its chunk too, until the index comes before it. The gap is a
    // hole.
    const QByteArray bytes = file.readAll();
    const qint64 media = bytes.indexOf("mdat") - 4;
    constexpr qint64 place = (1LL << 32) - 100;
    QByteArray content = bytes.mid(media);
    const qint64 table = content.indexOf("stco") + 4;
    content.replace(table + 8, 4, QByteArray("\xFF\xFF\xFF\xA4", 4)); // place + 8
    ASSERT_TRUE(file.seek(place) && file.write(content) == content.size() && file.flush());
    // "free" up to there, with a 64-bit size that says so, would be dropped; an unknown atom isn't.
    ASSERT_TRUE(file.seek(media) && file.write(QByteArray("\0\0\0\1keep\0\0\0\0", 12)) == 12);
    const auto gap = static_cast<quint32>(place - media);
    ASSERT_TRUE(file.write(QByteArray::fromHex(QByteArray::number(gap, 16))) == 4 && file.flush());

    StagedFileStream stream(path);
    Mp4File mp4(stream);
    mp4.optimize();
    Mp4Atom *table64 = nullptr;
    Mp4File moved(stream);
    for (Mp4Atom &track : moved.moov().children) {
        Mp4Atom *found = track.find({"mdia", "minf", "stbl", "co64"});
        table64 = found != nullptr ? found : table64;
    }
    ASSERT_NE(table64, nullptr);
    const auto offset = static_cast<long>(chunkOffsets(*table64).front());
    EXPECT_GT(offset, 1L << 32);
    stream.seek(offset, TagLib::IOStream::Beginning);
    const TagLib::ByteVector chunk = stream.readBlock(1000);
    EXPECT_EQ(QByteArray(chunk.data(), 1000), content.mid(8, 1000));
}

TEST_F(Mp4Tags, AFailureLeavesTheFileOrTagsItUncompacted)
{
    const QString path = audio({u"-c:a"_s, u"aac"_s, u"-movflags"_s, u"+faststart"_s});
    const QByteArray original = readFile(path);
    EXPECT_TRUE(test::withFileSizeLimit(original.size() - 1, [&] {
        return !helper.writeTagsForFile(path, *test::fullRecord(), false, false);
    }));
    EXPECT_EQ(readFile(path), original);

    // A chunk in free space: dropping that would drop music.
    QByteArray misleading = original;
    misleading.replace(misleading.indexOf("mdat"), 4, "free");
    test::writeFile(path, misleading);
    ASSERT_TRUE(helper.writeTagsForFile(path, *test::fullRecord(), false, false));
    EXPECT_EQ(helper.tagsForFile(path)->titleText(), test::fullRecord()->titleText());
    EXPECT_EQ(readFile(path).indexOf(original.mid(original.indexOf("mdat") + 4)),
              original.indexOf("mdat") + 4);

    test::writeFile(path, "no MP4 file");
    EXPECT_THROW(helper.tagsForFile(path), std::runtime_error);
    EXPECT_THROW(helper.writeTagsForFile(path, TagsObject(), false, false), std::runtime_error);
    EXPECT_EQ(helper.tagsForFile(folder.file(u"missing"_s))->titleText(), u""_s);
    EXPECT_FALSE(helper.writeTagsForFile(folder.file(u"missing"_s), TagsObject(), false, false));
}

TEST_F(Mp4Tags, DatesAndGenreCodesAreReadByTheirRules)
{
    const QString path = audio();
    const QStringList dates[] = {{u"1999"_s, u"1999//"_s},
                                 {u"1999-07"_s, u"//"_s},
                                 {u"2004-05-06"_s, u"2004/05/06"_s},
                                 {u"2004-05-06T07:00:00Z"_s, u"2004/05/06"_s},
                                 {u"2004-13-06"_s, u"//"_s}};
    for (const QStringList &date : dates) {
        TagsObject record;
        record.setYearText(date.first());
        ASSERT_TRUE(helper.writeTagsForFile(path, record, true, false));
        const auto result = helper.tagsForFile(path);
        EXPECT_EQ(result->yearText() + u'/' + result->monthText() + u'/' + result->dayText(), date.last());
    }
    EXPECT_EQ(mp4GenreText(0), u""_s);
    EXPECT_EQ(mp4GenreText(1), u"Blues"_s);
    EXPECT_EQ(mp4GenreText(126), u"Dance Hall"_s);
    EXPECT_EQ(mp4GenreText(127), std::nullopt);
    EXPECT_EQ(mp4GenreText(255), u"none"_s);
}

TEST_F(Mp4Tags, GaplessIsMarkedAndTheRightsStay)
{
    const QString path = audio();
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), 0640), 0);
    const QByteArray digest = test::decodedDigest(path);
    helper.makeGapless(path);
    EXPECT_TRUE(readFile(path).contains(item("pgap", 21, "\1")));
    EXPECT_EQ(QFileInfo(path).permissions() & QFile::Permissions(0x777), QFile::Permissions(0x640));
    EXPECT_EQ(test::decodedDigest(path), digest);
}

} // namespace
} // namespace kruv
