// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/TaggedAudio.h"
#include "tags/TagLibTagsHelper.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::AudioFolder;
using test::probedTags;
using test::readFile;
using test::writeFile;

using Helper = TagLibTagsHelper;

/// What all six formats have in common.
struct Format
{
    const char *extension;
    Helper::Record (Helper::*read)(const QString &) const;
    std::function<bool(const QString &, const TagsObject &, bool)> write;
    bool ffmpegDecodes = true;
};

bool writeAiff(const QString &path, const TagsObject &record, bool /*writeEmptyTags*/)
{
    return Helper().writeTagsForAIFFFile(path, record);
}

auto writer(bool (Helper::*write)(const QString &, const TagsObject &, bool) const)
{
    return [write](const QString &path, const TagsObject &record, bool writeEmptyTags) {
        return (Helper().*write)(path, record, writeEmptyTags);
    };
}

class EveryFormat : public testing::TestWithParam<Format>
{
protected:
    QString extension() const { return QString::fromLatin1(GetParam().extension); }
    QString audio(const QString &name = {}) const { return folder.audio(extension(), name); }
    Helper::Record read(const QString &path) const { return (helper.*GetParam().read)(path); }
    bool write(const QString &path, const TagsObject &record, bool writeEmptyTags = false) const
    {
        return GetParam().write(path, record, writeEmptyTags);
    }

    const AudioFolder folder = {};
    const Helper helper{};
};

constexpr std::array commonFields{TagField::Title, TagField::Artist, TagField::Album, TagField::Comment,
                                  TagField::Genre, TagField::Year,   TagField::Track};

TEST_P(EveryFormat, KeepsTextsAndSamples)
{
    const QString path = audio();
    const QByteArray before = GetParam().ffmpegDecodes ? test::decodedDigest(path) : QByteArray();
    const auto record = test::fullRecord();
    for (const bool writeEmptyTags : {false, true, false}) {
        ASSERT_TRUE(write(path, *record, writeEmptyTags));
        const auto result = read(path);
        for (const TagField field : commonFields) {
            EXPECT_EQ(result->text(field), record->text(field)) << static_cast<int>(field);
        }
    }
    if (GetParam().ffmpegDecodes) {
        EXPECT_EQ(test::decodedDigest(path), before);
        const auto probed = probedTags(path);
        EXPECT_EQ(probed.value(u"title"_s), record->titleText());
        EXPECT_EQ(probed.value(u"artist"_s), record->artistText());
        EXPECT_EQ(probed.value(u"album"_s), record->albumText());
        EXPECT_EQ(probed.value(u"comment"_s), record->commentText());
        EXPECT_EQ(probed.value(u"genre"_s), record->genreText());
    } else {
        EXPECT_TRUE(readFile(path).contains(QByteArray("TITLE\0", 6) + record->titleText().toUtf8()));
        EXPECT_TRUE(readFile(path).startsWith("MAC " + QByteArray(20'000, 'a')));
    }
}

TEST_P(EveryFormat, AnEmptyTextClearsOnlyWhenAsked)
{
    const QString path = audio();
    ASSERT_TRUE(write(path, *test::fullRecord()));
    TagsObject empty;
    helper.setBlankTags(empty);
    ASSERT_TRUE(write(path, empty));
    EXPECT_EQ(read(path)->titleText(), test::fullRecord()->titleText());
    EXPECT_EQ(read(path)->yearText(), u"2004"_s);

    ASSERT_TRUE(write(path, empty, true));
    const bool clears = extension() != u"aiff";
    for (const TagField field : commonFields) {
        EXPECT_EQ(read(path)->text(field).isEmpty(), clears) << static_cast<int>(field);
    }
}

TEST_P(EveryFormat, TakesAnyName)
{
    for (const QString &name : {u"a 'b' \"c\" %1 %s\n.x"_s, u"-name"_s, u"\u6b4c.x"_s}) {
        const QString path = audio(name);
        ASSERT_TRUE(write(path, *test::fullRecord())) << name.toStdString();
        EXPECT_EQ(read(path)->titleText(), test::fullRecord()->titleText());
        EXPECT_EQ(read(path)->yearText(), u"2004"_s);
    }
}

TEST_P(EveryFormat, WhatIsNoSuchFileIsNotWritten)
{
    QRandomGenerator random(7);
    QByteArray garbage(30'000, '\0');
    for (char &byte : garbage) {
        byte = static_cast<char>(random.bounded(0x7F)); // no MPEG frame begins below 0x80
    }
    for (const QByteArray &content : {QByteArray(), QByteArray("x"), garbage, readFile(audio()).left(2)}) {
        const QString path = folder.file(u"not-audio"_s);
        writeFile(path, content);
        try {
            write(path, *test::fullRecord());
            ADD_FAILURE() << "no exception for " << content.size() << " bytes";
        } catch (const std::runtime_error &failure) {
            EXPECT_STREQ(failure.what(), "Unable to open the output file for tagging.");
        }
        EXPECT_EQ(readFile(path), content);
        EXPECT_TRUE(read(path)->titleText().isEmpty());
    }
    EXPECT_THROW(write(folder.file(u"."_s), *test::fullRecord()), std::runtime_error);
}

TEST_P(EveryFormat, MissingOrReadOnlyFileIsFalseAndReadsBlank)
{
    const QString missing = folder.file(u"missing"_s);
    EXPECT_FALSE(write(missing, *test::fullRecord()));
    for (const QString &path : {missing, folder.file(u"."_s)}) {
        const auto record = read(path);
        EXPECT_EQ(record->titleText(), u""_s);
        EXPECT_FALSE(record->composerText().isNull());
        EXPECT_TRUE(record->albumArt().isNull());
    }
    const QString path = audio();
    ASSERT_EQ(chmod(path.toUtf8().constData(), 0444), 0);
    EXPECT_TRUE(test::inUnprivilegedProcess([&] { return !write(path, *test::fullRecord()); }));
}

TEST_P(EveryFormat, AFullDiskOrAnyCutOfTheFileNeverLosesAudio)
{
    const QString path = audio();
    const QByteArray original = readFile(path);
    TagsObject large;
    large.setTitleText(QString(60'000, u't'));
    EXPECT_TRUE(test::withFileSizeLimit(original.size() + 20'000, [&] { return !write(path, large); }));
    EXPECT_EQ(readFile(path), original);

    for (const int percent : {1, 20, 60, 99}) {
        const QByteArray cut = original.left(original.size() * percent / 100);
        writeFile(path, cut);
        try {
            write(path, *test::fullRecord());
        } catch (const std::runtime_error &) {
            EXPECT_EQ(readFile(path), cut) << percent;
        }
        EXPECT_TRUE(readFile(path).contains(cut.right(cut.size() / 4))) << percent;
        read(path);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Formats, EveryFormat,
    testing::Values(Format{"mp3", &Helper::tagsForMP3File, writer(&Helper::writeTagsForMP3File)},
                    Format{"aiff", &Helper::tagsForAIFFFile, writeAiff},
                    Format{"flac", &Helper::tagsForFlacFile, writer(&Helper::writeTagsForFLACFile)},
                    Format{"ape", &Helper::tagsForAPEFile, writer(&Helper::writeTagsForAPEFile), false},
                    Format{"wv", &Helper::tagsForWavpackFile, writer(&Helper::writeTagsForWavpackFile)},
                    Format{"tta", &Helper::tagsForTTAFile, writer(&Helper::writeTagsForTTAFile)}),
    [](const auto &test) { return std::string(test.param.extension); });

/// An APE tag (version 2, footer only) with one item, as other programs append it.
QByteArray apeTag(const QByteArray &key, const QByteArray &value)
{
    const auto number = [](quint32 value32) {
        QByteArray bytes;
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.append(static_cast<char>(value32 >> shift & 0xFFU));
        }
        return bytes;
    };
    const QByteArray item = number(static_cast<quint32>(value.size())) + number(0) + key + '\0' + value;
    return item + "APETAGEX" + number(2000) + number(static_cast<quint32>(item.size()) + 32) + number(1) +
           number(0) + QByteArray(8, '\0');
}

TEST(ApeTags, WhatIsStoredBesideTheNumberStays)
{
    const AudioFolder folder = {};
    const Helper helper{};
    const QString path = folder.audio(u"ape"_s);
    const QByteArray audio = readFile(path);
    writeFile(path, audio + apeTag("Track", "3/12"));
    ASSERT_EQ(helper.tagsForAPEFile(path)->trackText(), u"3"_s);

    TagsObject record;
    record.setTrackText(u"3"_s);
    record.setYearText(u"c. 1999"_s);
    record.setTitleText(u"T"_s);
    ASSERT_TRUE(helper.writeTagsForAPEFile(path, record, false));
    EXPECT_TRUE(readFile(path).contains("3/12"));
    EXPECT_EQ(helper.tagsForAPEFile(path)->yearText(), u""_s) << "no leading number is 0";

    record.setTrackText(u"4/12"_s);
    ASSERT_TRUE(helper.writeTagsForAPEFile(path, record, false));
    EXPECT_EQ(helper.tagsForAPEFile(path)->trackText(), u"4"_s);
}

TEST(ApeTags, ForeignItemsAndAnId3v1TagStay)
{
    const AudioFolder folder = {};
    const Helper helper{};
    const QString path = folder.audio(u"wv"_s);
    const QByteArray audio = readFile(path);
    QByteArray id3v1 = "TAGShort title";
    id3v1.resize(128, '\0');
    writeFile(path, audio + apeTag("REPLAYGAIN_TRACK_GAIN", "-3.21 dB") + id3v1);
    ASSERT_TRUE(helper.writeTagsForWavpackFile(path, *test::fullRecord(), true));
    EXPECT_TRUE(readFile(path).contains(QByteArray("REPLAYGAIN_TRACK_GAIN\0-3.21 dB", 30)));
    EXPECT_EQ(helper.tagsForWavpackFile(path)->albumText(), QString(300, u'A'))
        << "not cut to ID3v1's length";
    EXPECT_TRUE(readFile(path).startsWith(audio));
}

} // namespace
} // namespace kruv
