// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Version.h"
#include "support/EnvironmentVariable.h"
#include "support/TaggedAudio.h"
#include "tags/FlacTagHelper.h"
#include "tags/TagLibTagsHelper.h"

#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv {
namespace {

using test::AudioFolder;
using test::readFile;
using test::toolOutput;

QStringList metaflac(const QStringList &arguments)
{
    return QString::fromUtf8(toolOutput(u"metaflac"_s, arguments)).split(u'\n', Qt::SkipEmptyParts);
}

QStringList fields(const QString &path)
{
    return metaflac({u"--export-tags-to=-"_s, path});
}

/// "type: 0 (STREAMINFO)" and "length: 34" of each block, as one text a block.
QStringList blocks(const QString &path)
{
    QStringList result;
    for (const QString &line : metaflac({u"--list"_s, path})) {
        if (line.startsWith(u"  type: ")) {
            result.append(line.section(u'(', 1).section(u')', 0, 0));
        } else if (line.startsWith(u"  length: ")) {
            result.last() += line.section(u':', 1);
        }
    }
    return result;
}

class FlacTags : public testing::Test
{
protected:
    void setTag(const QString &field) const { metaflac({u"--set-tag="_s + field, path}); }

    const AudioFolder folder = {};
    const TagLibTagsHelper helper{};
    const QString path = folder.audio(u"flac"_s);
};

TEST_F(FlacTags, WritesEveryField)
{
    const auto record = test::fullRecord();
    record->setCustomTagsDictionary(
        {{u"Mood"_s, u"100% = calm"_s}, {u"BLANK"_s, u""_s}, {u"a=b"_s, u"no name"_s}});
    ASSERT_TRUE(helper.writeTagsForFLACFile(path, *record, true));
    QStringList expected{
        u"TITLE="_s + record->titleText(),
        u"ARTIST="_s + record->artistText(),
        u"ALBUMARTIST="_s + record->albumArtistText(),
        u"ALBUM="_s + record->albumText(),
        u"DISCNUMBER=1"_s,
        u"DISCTOTAL=2"_s,
        u"TRACKNUMBER=3"_s,
        u"TRACKTOTAL=12"_s,
        u"COMMENT="_s + record->commentText(),
        u"DESCRIPTION="_s + record->commentText(),
        u"GENRE=Rock"_s,
        u"COMPOSER="_s + record->composerText(),
        u"ENCODER=Kruv "_s + shortVersion(),
        u"MOOD=100% = calm"_s,
        u"DATE=2004-05-06"_s,
    };
    QStringList written = fields(path);
    expected.sort();
    written.sort();
    EXPECT_EQ(written, expected);

    const auto result = helper.tagsForFlacFile(path);
    EXPECT_TRUE(result->isEqual(record.get()));
    EXPECT_EQ(result->customTagsDictionary(), (TagsObject::CustomTags{{u"MOOD"_s, u"100% = calm"_s}}));
    const QStringList picture = metaflac({u"--list"_s, u"--block-type=PICTURE"_s, path});
    for (const char *line :
         {"  type: 0 (Other)", "  MIME type: image/png", "  width: 8", "  height: 6", "  depth: 24"}) {
        EXPECT_TRUE(picture.contains(QString::fromLatin1(line))) << line;
    }
}

TEST_F(FlacTags, WhatOthersWroteStays)
{
    for (const char *field :
         {"replaygain_track_gain=-3.21 dB", "ARTIST=One", "ARTIST=Two", "DATE=2004-05", "COMMENT=c",
          "DESCRIPTION=d", "ENCODER=other", "TOTALTRACKS=9", "LYRICS=la\n", "MOOD=gr~n"}) {
        setTag(QString::fromLatin1(field));
    }
    test::writeFile(path, readFile(path).replace("gr~n", "gr\xFCn")); // Latin-1, which has no place there
    const QString cover = folder.file(u"cover.png"_s);
    ASSERT_TRUE(test::picture(Qt::green).save(cover));
    metaflac({u"--import-picture-from=3||front||"_s + cover, path});
    metaflac({u"--import-picture-from=4||back||"_s + cover, path});
    const QString cue = folder.file(u"cue"_s);
    test::writeFile(cue, "FILE \"x\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n");
    metaflac({u"--import-cuesheet-from="_s + cue, path});
    const QStringList blocksBefore = blocks(path);
    const qint64 sizeBefore = QFileInfo(path).size();

    const auto record = helper.tagsForFlacFile(path);
    EXPECT_EQ(record->artistText(), u"One Two"_s);
    EXPECT_EQ(record->commentText(), u"d"_s);
    EXPECT_EQ(record->yearText(), u""_s) << "2004-05 fits no pattern";
    EXPECT_EQ(record->customTagsDictionary().value(u"REPLAYGAIN_TRACK_GAIN"_s), u"-3.21 dB"_s);
    EXPECT_FALSE(record->customTagsDictionary().contains(u"ENCODER"_s));
    EXPECT_EQ(record->albumArt().pixelColor(0, 0), QColor(Qt::green));

    record->setAlbumArt({});
    record->setTitleText(u"New"_s);
    record->setCustomTagsDictionary({{u"LYRICS"_s, u"la"_s}}); // as the editor trims it
    ASSERT_TRUE(helper.writeTagsForFLACFile(path, *record, false));
    const QStringList written = fields(path);
    for (const char *field : {"TITLE=New", "ARTIST=One", "ARTIST=Two", "DATE=2004-05", "TOTALTRACKS=9",
                              "COMMENT=c", "DESCRIPTION=d", "LYRICS=la", "MOOD=gr\xFCn"}) {
        EXPECT_EQ(written.count(QString::fromLatin1(field)), 1) << field;
    }
    EXPECT_EQ(helper.tagsForFlacFile(path)->customTagsDictionary().value(u"LYRICS"_s), u"la\n"_s);
    const auto foreign = [](const QString &block) {
        return !block.startsWith(u"VORBIS_COMMENT") && !block.startsWith(u"PADDING");
    };
    QStringList kept = blocks(path);
    QStringList expected = blocksBefore;
    kept.removeIf([&](const QString &block) { return !foreign(block); });
    expected.removeIf([&](const QString &block) { return !foreign(block); });
    EXPECT_EQ(kept, expected);
    EXPECT_EQ(kept.filter(u"PICTURE"_s).size(), 2);
    EXPECT_EQ(QFileInfo(path).size(), sizeBefore) << "the padding takes the difference";
}

TEST_F(FlacTags, WriteEmptyClearsAllButTheEncoder)
{
    ASSERT_TRUE(helper.writeTagsForFLACFile(path, *test::fullRecord(), false));
    setTag(u"MOOD=calm"_s);
    TagsObject blank;
    helper.setBlankTags(blank);
    ASSERT_TRUE(helper.writeTagsForFLACFile(path, blank, true));
    EXPECT_EQ(fields(path), (QStringList{u"ENCODER=Kruv "_s + shortVersion(), u"DATE="_s}));
    EXPECT_TRUE(blocks(path).filter(u"PICTURE"_s).isEmpty());
}

TEST_F(FlacTags, APictureBeyondTheFormatsLimitIsRefused)
{
    // Nothing in it to compress: 17 MB.
    QImage noise(2400, 2400, QImage::Format_RGB32);
    quint32 state = 1;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x) {
            state = state * 1664525U + 1013904223U;
            noise.setPixel(x, y, state >> 8U | 0xFF000000U);
        }
    }
    TagsObject record;
    record.setAlbumArt(noise);
    const QByteArray before = readFile(path);
    EXPECT_FALSE(helper.writeTagsForFLACFile(path, record, false));
    EXPECT_EQ(readFile(path), before);
}

TEST_F(FlacTags, TheDateIsThereEvenWithoutTheTool)
{
    const test::EnvironmentVariable resources("KRUV_RESOURCES", folder.path().toUtf8());
    EXPECT_TRUE(helper.writeTagsForFLACFile(path, *test::fullRecord(), false));
    EXPECT_EQ(helper.tagsForFlacFile(path)->dayText(), u"06"_s);
}

TEST_F(FlacTags, SymbolicLinkAndRightsStay)
{
    const QString link = folder.file(u"link.flac"_s);
    ASSERT_TRUE(QFile::link(path, link));
    ASSERT_EQ(chmod(path.toUtf8().constData(), 0600), 0);
    const FlacTagHelper metaflacHelper{};
    metaflacHelper.removePadding(link);
    EXPECT_TRUE(blocks(path).filter(u"PADDING"_s).isEmpty());
    ASSERT_TRUE(helper.writeTagsForFLACFile(link, *test::fullRecord(), false));
    metaflacHelper.removePadding(link);

    EXPECT_EQ(QFile::symLinkTarget(link), path);
    struct stat status;
    ASSERT_EQ(stat(path.toUtf8().constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0600U);
    EXPECT_EQ(helper.tagsForFlacFile(path)->titleText(), test::fullRecord()->titleText());
}

TEST_F(FlacTags, HelperSetsOneFieldAndReadsFigures)
{
    const FlacTagHelper metaflacHelper{};
    const QString key = u"KEY"_s;
    setTag(u"KEY=1"_s);
    setTag(u"KEY=2"_s);
    metaflacHelper.writeTagForFile(path, key, u""_s, false);
    EXPECT_EQ(fields(path).filter(key).size(), 2);
    metaflacHelper.writeTagForFile(path, key, u"-\"x\" = %1 \u00e9"_s, false);
    EXPECT_EQ(fields(path).filter(key), QStringList{u"KEY=-\"x\" = %1 \u00e9"_s});
    metaflacHelper.writeTagForFile(path, key, u""_s, true);
    EXPECT_EQ(fields(path).filter(key), QStringList{u"KEY="_s});
    metaflacHelper.removeTagForFile(path, key);
    EXPECT_TRUE(fields(path).filter(key).isEmpty());

    const AudioFormatObject format = metaflacHelper.getFormatInfo(path);
    EXPECT_EQ(format.sampleRate, 44100);
    EXPECT_EQ(format.channels, 2);
    EXPECT_EQ(format.bitsPerChannel, 16);
    EXPECT_EQ(format.totalSamples, 44100);
    EXPECT_DOUBLE_EQ(format.time(), 1.0);

    // The 36-bit count of frames ends the eight bytes from offset 18 (RFC 9639, section 8.2).
    QByteArray longFile = readFile(path);
    longFile.replace(22, 4, QByteArray::fromHex("fffffff0"));
    longFile[21] = static_cast<char>((longFile[21] & 0xF0) | 0x01);
    test::writeFile(path, longFile);
    EXPECT_EQ(metaflacHelper.getFormatInfo(path).totalSamples, 0x1FFFFFFF0);

    const AudioFormatObject none = metaflacHelper.getFormatInfo(folder.file(u"missing"_s));
    EXPECT_EQ(none.sampleRate + none.channels + none.bitsPerChannel, 0);
    EXPECT_EQ(none.totalSamples, 0);
    EXPECT_DOUBLE_EQ(none.time(), 0.0);
}

} // namespace
} // namespace kruv
