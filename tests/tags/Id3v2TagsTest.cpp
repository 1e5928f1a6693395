// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TaggedAudio.h"
#include "tags/TagLibTagsHelper.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::AudioFolder;
using test::probedTags;
using test::readFile;
using test::writeFile;

QByteArray bigEndian(qsizetype number, int bitsPerByte)
{
    QByteArray bytes;
    for (int index = 3; index >= 0; --index) {
        bytes.append(static_cast<char>(number >> (index * bitsPerByte) & ((1 << bitsPerByte) - 1)));
    }
    return bytes;
}

/// A frame of an ID3v2.`version` tag. Sizes have 7 bits a byte from version 4 on.
QByteArray frame(int version, const QByteArray &id, const QByteArray &content)
{
    return id + bigEndian(content.size(), version < 4 ? 8 : 7) + QByteArray(2, '\0') + content;
}

QByteArray textFrame(int version, const QByteArray &id, const QByteArray &latin1)
{
    return frame(version, id, '\0' + latin1);
}

QByteArray id3v2(int version, const QByteArray &frames)
{
    return QByteArray("ID3") + static_cast<char>(version) + QByteArray(2, '\0') +
           bigEndian(frames.size(), 7) + frames;
}

QByteArray comment(const QByteArray &description, const QByteArray &text)
{
    return frame(4, "COMM", QByteArray("\0eng", 4) + description + '\0' + text);
}

QByteArray pictureFrame(const QByteArray &bytes)
{
    return frame(4, "APIC", QByteArray("\0image/x\0\3\0", 11) + bytes);
}

class Id3v2Tags : public testing::Test
{
protected:
    /// An MP3 file with this tag in front.
    QString tagged(const QByteArray &tag) const
    {
        QString path = folder.audio(u"mp3"_s);
        writeFile(path, tag + readFile(path));
        return path;
    }
    QString readDateOf(const QByteArray &tag) const
    {
        const auto record = helper.tagsForMP3File(tagged(tag));
        return record->yearText() + u'|' + record->monthText() + u'|' + record->dayText();
    }

    const AudioFolder folder = {};
    const TagLibTagsHelper helper{};
};

TEST_F(Id3v2Tags, WritesEveryField)
{
    const auto record = test::fullRecord();
    for (const QString &extension : {u"mp3"_s, u"aiff"_s}) {
        const bool mp3 = extension == u"mp3";
        const QString path = folder.audio(extension);
        ASSERT_TRUE(mp3 ? helper.writeTagsForMP3File(path, *record, false)
                        : helper.writeTagsForAIFFFile(path, *record));
        const auto result = mp3 ? helper.tagsForMP3File(path) : helper.tagsForAIFFFile(path);
        EXPECT_TRUE(result->isEqual(record.get())) << extension.toStdString();
        const auto probed = probedTags(path);
        EXPECT_EQ(probed.value(u"track"_s), u"3/12"_s);
        EXPECT_EQ(probed.value(u"disc"_s), u"1/2"_s);
        EXPECT_EQ(probed.value(u"composer"_s), record->composerText());
        EXPECT_EQ(probed.value(u"album_artist"_s), record->albumArtistText());
        const QByteArray bytes = readFile(path);
        EXPECT_EQ(bytes.count("TDRC"), mp3 ? 1 : 0);
        EXPECT_EQ(bytes.count("TYER"), mp3 ? 0 : 1);
        EXPECT_EQ(bytes.contains(textFrame(4, "TDRC", "2004-05-06")), mp3);
        EXPECT_EQ(bytes.contains(textFrame(4, "TYER", "2004")), !mp3);
        EXPECT_EQ(bytes.contains(textFrame(4, "TDAT", "0605")), !mp3);
        // Encoding byte 3 is UTF-8, 0 Latin-1.
        EXPECT_TRUE(bytes.contains(frame(4, "TRCK", QByteArray(1, mp3 ? '\3' : '\0') + "3/12")));
        EXPECT_TRUE(bytes.contains(QByteArray("\0image/png\0", 11)));
    }
}

TEST_F(Id3v2Tags, ReadsNumbersWithTotals)
{
    struct Case
    {
        const char *stored;
        QString number;
        QString total;
    };
    const Case cases[] = {{"3/12", u"3"_s, u"12"_s},
                          {"/12", u""_s, u"12"_s},
                          {"7", u"7"_s, u""_s},
                          {"1/2/3", u"1"_s, u"2/3"_s},
                          {"4/", u"4"_s, u""_s}};
    for (const Case &each : cases) {
        const QString path =
            tagged(id3v2(4, textFrame(4, "TRCK", each.stored) + textFrame(4, "TPOS", each.stored)));
        const auto record = helper.tagsForMP3File(path);
        EXPECT_EQ(record->trackText(), each.number) << each.stored;
        EXPECT_EQ(record->trackTotalText(), each.total) << each.stored;
        EXPECT_EQ(record->discText(), each.number) << each.stored;
        EXPECT_EQ(record->discTotalText(), each.total) << each.stored;
        EXPECT_FALSE(record->trackText().isNull() || record->trackTotalText().isNull()) << each.stored;
    }
}

TEST_F(Id3v2Tags, ReadsDatesOfEveryVersion)
{
    EXPECT_EQ(readDateOf(id3v2(4, textFrame(4, "TDRC", "2004/31/12"))), u"2004|12|31"_s);
    EXPECT_EQ(readDateOf(id3v2(4, textFrame(4, "TDRC", "autumn"))), u"||"_s);
    // Version 2.2: IDs of three letters, sizes of three bytes, no flags.
    const QByteArray old = id3v2(2, QByteArray("TYE\0\0\5\0002004TDA\0\0\5\0000605", 22));
    EXPECT_EQ(readDateOf(old), u"2004|05|06"_s);
    TagsObject title;
    title.setTitleText(u"New"_s);
    const QString path = tagged(old);
    ASSERT_TRUE(helper.writeTagsForMP3File(path, title, false));
    EXPECT_EQ(helper.tagsForMP3File(path)->dayText(), u"06"_s);
    for (const int version : {3, 4}) {
        const auto date = [&](const QByteArray &year, const QByteArray &dayMonth) {
            return readDateOf(id3v2(version, textFrame(version, "TYER", year) +
                                                 textFrame(version, "TDAT", dayMonth) +
                                                 textFrame(version, "TIME", "1230")));
        };
        EXPECT_EQ(date("2004", "0605"), u"2004|05|06"_s) << version;
        EXPECT_EQ(date("2004", "9999"), u"2004|99|99"_s) << version;
        EXPECT_EQ(date("2004", "605"), u"2004||"_s) << version;
        EXPECT_EQ(date("c. 1999", "605"), u"c. 1999||"_s) << version;
    }
}

TEST_F(Id3v2Tags, ANewDateReplacesTheOldOneInEveryForm)
{
    TagsObject record;
    record.setYearText(u"1999"_s);
    for (const int version : {3, 4}) {
        const QByteArray tag =
            id3v2(version, textFrame(version, "TYER", "2004") + textFrame(version, "TDAT", "0605"));
        const QString mp3 = tagged(tag);
        ASSERT_TRUE(helper.writeTagsForMP3File(mp3, record, false));
        EXPECT_EQ(helper.tagsForMP3File(mp3)->yearText(), u"1999"_s);
        EXPECT_EQ(helper.tagsForMP3File(mp3)->monthText(), u""_s);
        EXPECT_FALSE(readFile(mp3).contains("TYER") || readFile(mp3).contains("TDAT"));

        const QString aiff = folder.audio(u"aiff"_s);
        writeFile(aiff, readFile(aiff) + "ID3 " + bigEndian(tag.size(), 8) + tag);
        ASSERT_EQ(helper.tagsForAIFFFile(aiff)->monthText(), u"05"_s);
        ASSERT_TRUE(helper.writeTagsForAIFFFile(aiff, record));
        EXPECT_EQ(helper.tagsForAIFFFile(aiff)->yearText(), u"1999"_s);
    }
}

TEST_F(Id3v2Tags, WhatOthersWroteStays)
{
    const QByteArray foreign = frame(3, "PRIV", QByteArray("owner\0data", 10)) + frame(3, "XYZW", "unknown") +
                               frame(3, "RVAD", "volume") + textFrame(3, "TPE1", "One") +
                               frame(3, "TXXX", QByteArray("\0replaygain_track_gain\0-3.21 dB", 31)) +
                               frame(3, "COMM", QByteArray("\0engiTunNORM\0 0000", 17));
    const QString path = tagged(id3v2(3, foreign));
    TagsObject record;
    record.setCommentText(u"mine"_s);
    record.setTitleText(u"New"_s);
    ASSERT_TRUE(helper.writeTagsForMP3File(path, record, false));
    ASSERT_TRUE(helper.writeTagsForMP3File(path, record, false));
    const QByteArray bytes = readFile(path);
    for (const char *kept : {"owner", "XYZW", "RVAD", "volume", "iTunNORM"}) {
        EXPECT_EQ(bytes.count(kept), 1) << kept;
    }
    EXPECT_EQ(probedTags(path).value(u"replaygain_track_gain"_s), u"-3.21 dB"_s);
    EXPECT_EQ(helper.tagsForMP3File(path)->commentText(), u"mine"_s);
    EXPECT_EQ(helper.tagsForMP3File(path)->artistText(), u"One"_s);
}

TEST_F(Id3v2Tags, SeveralValuesStayWhenTheTextIsUnchanged)
{
    const QByteArray two("One\0Two", 7);
    const QString path = tagged(id3v2(4, textFrame(4, "TPE1", two) + textFrame(4, "TCOM", two)));
    const auto record = helper.tagsForMP3File(path);
    EXPECT_EQ(record->artistText(), u"One Two"_s);
    ASSERT_TRUE(helper.writeTagsForMP3File(path, *record, false));
    EXPECT_EQ(readFile(path).count(two), 2);
}

TEST_F(Id3v2Tags, PicturesAreAddedAndClearedOnlyWithWriteEmpty)
{
    const QString path = folder.audio(u"mp3"_s);
    const auto record = test::fullRecord();
    ASSERT_TRUE(helper.writeTagsForMP3File(path, *record, false));
    record->setAlbumArt(test::picture(Qt::blue));
    ASSERT_TRUE(helper.writeTagsForMP3File(path, *record, false));
    EXPECT_EQ(readFile(path).count("APIC"), 2);
    EXPECT_EQ(helper.tagsForMP3File(path)->albumArt(),
              test::picture(Qt::red).convertToFormat(QImage::Format_RGB32));

    record->setAlbumArt({});
    ASSERT_TRUE(helper.writeTagsForMP3File(path, *record, false));
    EXPECT_EQ(readFile(path).count("APIC"), 2);
    ASSERT_TRUE(helper.writeTagsForMP3File(path, *record, true));
    EXPECT_EQ(readFile(path).count("APIC"), 0);
}

TEST_F(Id3v2Tags, ReadsPicturesOfAnyKindAndBrokenOnes)
{
    const auto readPicture = [&](const QByteArray &bytes) {
        return helper.tagsForMP3File(tagged(id3v2(4, pictureFrame(bytes))))->albumArt();
    };
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    ASSERT_TRUE(test::picture(Qt::red, 40, 30).save(&buffer, "JPEG"));
    const QByteArray gif =
        QByteArray::fromHex("47494638396101000100800000ff0000ffffff2c00000000010001000002024401003b");

    EXPECT_EQ(readPicture(jpeg).size(), QSize(40, 30));
    EXPECT_EQ(readPicture(gif).size(), QSize(1, 1));
    EXPECT_TRUE(readPicture(jpeg.left(20)).isNull());
    EXPECT_TRUE(readPicture("not a picture").isNull());
    EXPECT_TRUE(readPicture({}).isNull());
}

TEST_F(Id3v2Tags, WriteEmptyStripsEveryKindOfTag)
{
    const QString path = tagged(id3v2(4, frame(4, "XYZW", "unknown") + comment("", "old")));
    QByteArray id3v1 = "TAGOld";
    id3v1.resize(128, '\0');
    writeFile(path, readFile(path) + id3v1);
    EXPECT_EQ(helper.tagsForMP3File(path)->titleText(), u"Old"_s);
    TagsObject record;
    record.setTitleText(u"New"_s);
    ASSERT_TRUE(helper.writeTagsForMP3File(path, record, true));
    EXPECT_FALSE(readFile(path).contains("XYZW") || readFile(path).contains("Old"));
    EXPECT_EQ(helper.tagsForMP3File(path)->titleText(), u"New"_s);
    EXPECT_EQ(helper.tagsForMP3File(path)->commentText(), u""_s);
}

TEST_F(Id3v2Tags, AiffKeepsItsOtherChunks)
{
    const QString path = folder.audio(u"aiff"_s);
    const QByteArray chunk = QByteArray("APPL") + bigEndian(5, 8) + QByteArray("own 1\0", 6);
    writeFile(path, readFile(path) + chunk);
    ASSERT_TRUE(helper.writeTagsForAIFFFile(path, *test::fullRecord()));
    EXPECT_TRUE(readFile(path).contains(chunk));
    EXPECT_EQ(helper.tagsForAIFFFile(path)->titleText(), test::fullRecord()->titleText());
    EXPECT_EQ(test::toolOutput(u"soxi"_s, {u"-s"_s, path}).trimmed(), "44100");
}

} // namespace
} // namespace kruv
