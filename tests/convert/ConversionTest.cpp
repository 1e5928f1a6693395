// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/PathNames.h"
#include "formats/Formats.h"
#include "formats/TagCopy.h"
#include "support/Audio.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "support/TaggedAudio.h"
#include "tabs/DecodeTab.h"
#include "tabs/EncodeTab.h"
#include "tags/TagLibTagsHelper.h"
#include "tags/TagsObject.h"

#include <QCryptographicHash>
#include <QFile>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// Conversions by the real tools.
class Conversions : public testing::Test
{
protected:
    void encode(const QStringList &paths)
    {
        EncodeTab &tab = session.controller.encodeTab();
        tab.sourceEncodeButton().setOn(true);
        tab.addFiles(paths);
        run(tab);
    }
    void encode(const QStringList &paths, const QString &format)
    {
        ASSERT_TRUE(session.controller.encodeTab().outputFormatMatrix().selectId(format.toLower()));
        encode(paths);
    }
    /// Into the folder "out".
    void decode(const QStringList &paths, const QString &format)
    {
        DecodeTab &tab = session.controller.decodeTab();
        tab.outputFormatMatrix().selectId(format.toLower());
        tab.addFiles(paths);
        session.person.textAnswers = {out};
        run(tab);
    }
    void run(BaseTab &tab)
    {
        session.ended.clear();
        tab.executeCommand();
        EXPECT_TRUE(session.runToEnd());
    }
    void deleteOriginals()
    {
        session.preferences.setValue(u"warnOnDelete"_s, false);
        session.controller.encodeTab().deleteOriginalsButton().setOn(true);
        session.controller.decodeTab().deleteOriginalsButton().setOn(true);
    }
    /// Text of every job that failed.
    QString failures() const
    {
        QString text;
        for (const Ended &job : session.ended) {
            text += job.error ? job.text + u'\n' : QString();
        }
        return text;
    }
    QString music(const QString &name) const { return session.music + u'/' + name; }
    QString flacOf(const QString &name, const AudioShape &shape = {.frames = 30'000})
    {
        writeWav(music(name + u".wav"_s), shape);
        encode({music(name + u".wav"_s)});
        QFile::remove(music(name + u".wav"_s));
        return music(name + u".flac"_s);
    }

    Session session;
    QString out = session.folder.makeFolder(u"out"_s);
};

const Format &formatOf(const QString &path)
{
    return *Formats::ofType(PathNames::fileType(path));
}

} // namespace

TEST_F(Conversions, EveryShapeComesBackBitForBit)
{
    constexpr AudioShape shapes[] = {
        {.sampleRate = 44100, .channels = 2, .bitsPerSample = 16, .frames = 1},
        {.sampleRate = 44100, .channels = 1, .bitsPerSample = 16, .frames = 5000},
        {.sampleRate = 48000, .channels = 6, .bitsPerSample = 16, .frames = 5000},
        {.sampleRate = 88200,
         .channels = 2,
         .bitsPerSample = 24,
         .frames = 5000,
         .signal = Signal::FullScaleSquare},
        {.sampleRate = 96000, .channels = 6, .bitsPerSample = 24, .frames = 5000},
        {.sampleRate = 192000, .channels = 1, .bitsPerSample = 24, .frames = 5000, .signal = Signal::Sine},
    };
    std::vector<AudioShape> aiffShapes;
    QStringList wavs;
    QStringList aiffs;
    for (std::size_t index = 0; index < std::size(shapes); ++index) {
        writeWav(music(u"w%1.wav"_s.arg(index)), shapes[index]);
        // The tool takes no surround sound from AIFF.
        AudioShape &aiff = aiffShapes.emplace_back(shapes[index]);
        aiff.channels = std::min(aiff.channels, 2U);
        writeAiff(music(u"a%1.aiff"_s.arg(index)), aiff);
        wavs << music(u"w%1.flac"_s.arg(index));
        aiffs << music(u"a%1.flac"_s.arg(index));
    }
    session.controller.encodeTab().flacVerifyButton().setOn(true);
    encode({session.music});
    EXPECT_EQ(failures(), QString());
    decode(wavs, u"WAV"_s);
    EXPECT_EQ(failures(), QString());
    decode(aiffs, u"AIFF"_s);
    EXPECT_EQ(failures(), QString());
    for (std::size_t index = 0; index < std::size(shapes); ++index) {
        EXPECT_TRUE(readWav(u"%1/w%2.wav"_s.arg(out).arg(index)) == makeAudio(shapes[index])) << index;
        EXPECT_TRUE(readAiff(u"%1/a%2.aiff"_s.arg(out).arg(index)) == makeAudio(aiffShapes[index])) << index;
    }
    EXPECT_EQ(namesIn(session.music).size(), static_cast<qsizetype>(4 * std::size(shapes)))
        << "originals stay";
}

TEST_F(Conversions, TagsAndPictureGoFromAiffToFlacAndBack)
{
    writeAiff(music(u"a.aiff"_s), {.frames = 1000});
    TagsObject tags;
    const std::pair<TagField, QString> fields[] = {{TagField::Title, u"Gl\u00fcck 50%"_s},
                                                   {TagField::Artist, u"\u6b4c"_s},
                                                   {TagField::Album, u"Live"_s},
                                                   {TagField::Year, u"2004"_s},
                                                   {TagField::Track, u"3"_s},
                                                   {TagField::TrackTotal, u"12"_s},
                                                   {TagField::Genre, u"Rock"_s},
                                                   {TagField::Comment, u"a=b"_s}};
    for (const auto &[field, text] : fields) {
        tags.setText(field, text);
    }
    QImage art(8, 6, QImage::Format_RGB32);
    art.fill(Qt::red);
    tags.setAlbumArt(art);
    const TagLibTagsHelper helper;
    ASSERT_TRUE(helper.writeTagsForAIFFFile(music(u"a.aiff"_s), tags));
    encode({music(u"a.aiff"_s)});
    EXPECT_EQ(toolOutput(u"metaflac"_s, {u"--show-tag=DATE"_s, music(u"a.flac"_s)}), "DATE=2004\n");
    decode({music(u"a.flac"_s)}, u"AIFF"_s);
    EXPECT_EQ(failures(), QString());
    for (const auto &[record, where] : {std::pair(helper.tagsForFlacFile(music(u"a.flac"_s)), "FLAC"),
                                        std::pair(helper.tagsForAIFFFile(out + u"/a.aiff"_s), "AIFF")}) {
        for (const auto &[field, text] : fields) {
            EXPECT_EQ(record->text(field), text) << where;
        }
        EXPECT_EQ(record->albumArt().size(), art.size()) << where;
    }
    EXPECT_TRUE(readAiff(out + u"/a.aiff"_s) == makeAudio({.frames = 1000}));
}

TEST_F(Conversions, TheFingerprintListIsMetaflacs)
{
    for (unsigned index : {1U, 2U, 3U}) {
        writeWav(music(u"t %1.wav"_s.arg(index)), {.frames = 1000, .seed = index});
    }
    session.controller.encodeTab().generateFFPButton().setOn(true);
    encode({session.music});
    const QByteArray list = readFile(music(u"fingerprint.ffp.txt"_s));
    for (int index : {1, 2, 3}) {
        const QString name = u"t %1.flac"_s.arg(index);
        const QByteArray digest = toolOutput(u"metaflac"_s, {u"--show-md5sum"_s, music(name)});
        EXPECT_EQ(digest.size(), 33);
        EXPECT_TRUE(list.contains(name.toUtf8() + ':' + digest)) << list.constData();
    }
}

TEST_F(Conversions, OddNamesAreConvertedAndOnlyThenDeleted)
{
    const QStringList names{u"a b \"c\" 'd'"_s,
                            u"50% off: live"_s,
                            u"-dash"_s,
                            u"new\nline"_s,
                            u"%1%n$HOME`x`"_s,
                            u"\u00fcn\u00ef \u6b4c"_s,
                            u"two.dots"_s,
                            u"back\\slash"_s,
                            u" "_s,
                            u"ERROR, *** Got error code"_s};
    deleteOriginals();
    for (const QString &name : names) {
        writeWav(music(name + u".wav"_s), {.frames = 500});
    }
    encode({session.music});
    EXPECT_EQ(failures(), QString());
    EXPECT_EQ(namesIn(session.music).filter(u".wav"_s), QStringList());
    session.controller.decodeTab().decodeFlacThroughErrors().setOn(true);
    decode({session.music}, u"WAV"_s);
    EXPECT_EQ(failures(), QString());
    EXPECT_EQ(namesIn(session.music), QStringList());
    for (const QString &name : names) {
        EXPECT_TRUE(readWav(out + u'/' + name + u".wav"_s) == makeAudio({.frames = 500}))
            << name.toStdString();
    }
}

TEST_F(Conversions, AFailureKeepsItsSourceAndStopsNobody)
{
    const QByteArray wav = wavBytes(makeAudio({.frames = 1000}));
    const std::pair<QString, QByteArray> bad[] = {{u"cut in a sample.wav"_s, wav.first(2001)},
                                                  {u"cut.wav"_s, wav.first(2044)},
                                                  {u"text.wav"_s, "not audio"},
                                                  {u"empty.aiff"_s, ""},
                                                  {u"header.wav"_s, wav.first(20)},
                                                  {u"no frames.wav"_s, wavBytes(makeAudio({.frames = 0}))},
                                                  {u"text.flac"_s, "not audio"},
                                                  {u"taken.wav"_s, wav},
                                                  {u"gone.wav"_s, wav},
                                                  {u"folder.wav"_s, wav}};
    deleteOriginals();
    for (const auto &[name, bytes] : bad) {
        writeFile(music(name), bytes);
    }
    writeFile(music(u"good.wav"_s), wav);
    EncodeTab &tab = session.controller.encodeTab();
    tab.addFiles({session.music});
    tab.fileList().removeExtension(u"flac"_s);
    // What changes between the intake and the command.
    QFile::remove(music(u"gone.wav"_s));
    QFile::remove(music(u"folder.wav"_s));
    session.folder.makeFolder(u"music/folder.wav"_s);
    session.folder.makeFolder(u"music/taken.flac"_s);
    session.person.buttonAnswers = {1}; // the folder "taken.flac" is an existing output
    tab.sourceEncodeButton().setOn(true);
    run(tab);
    for (const Ended &job : session.ended) {
        const QString source = PathNames::lastPathComponent(job.input);
        EXPECT_EQ(job.error, source != u"good.wav"_s) << source.toStdString();
        EXPECT_TRUE(!job.error || !job.text.isEmpty()) << source.toStdString();
    }
    EXPECT_EQ(session.ended.size(), std::size(bad));
    for (const auto &[name, bytes] : bad) {
        if (name != u"gone.wav"_s && name != u"folder.wav"_s) {
            EXPECT_EQ(readFile(music(name)), bytes) << name.toStdString();
        }
    }
    EXPECT_FALSE(QFile::exists(music(u"good.wav"_s)));

    decode({music(u"text.flac"_s)}, u"WAV"_s);
    EXPECT_NE(failures(), QString());
    EXPECT_EQ(readFile(music(u"text.flac"_s)), QByteArray("not audio"));
}

TEST_F(Conversions, ADamagedFlacIsNeverLost)
{
    const QString damaged = flacOf(u"damaged"_s);
    const QString cut = flacOf(u"cut"_s);
    const QString good = flacOf(u"good"_s);
    QByteArray bytes = readFile(damaged);
    bytes.replace(bytes.size() / 2, 2000, QByteArray(2000, '\0'));
    writeFile(damaged, bytes);
    // Frames missing at the end and no MD5 signature: the tool ends with status 0 when it goes on through
    // errors.
    toolOutput(u"flac"_s, {u"-s"_s, u"-f"_s, u"--no-md5-sum"_s, cut, u"-o"_s, cut});
    const QByteArray whole = readFile(cut);
    writeFile(cut, whole.first(whole.indexOf("\xff\xf8", whole.size() / 2)));

    deleteOriginals();
    session.controller.decodeTab().decodeFlacThroughErrors().setOn(true);
    decode({session.music}, u"WAV"_s);
    ASSERT_EQ(session.ended.size(), 3U);
    for (const Ended &job : session.ended) {
        EXPECT_EQ(job.error, job.input != good) << job.text.toStdString();
    }
    EXPECT_EQ(namesIn(session.music), (QStringList{u"cut.flac"_s, u"damaged.flac"_s}));
    EXPECT_EQ(namesIn(out), (QStringList{u"cut.wav"_s, u"damaged.wav"_s, u"good.wav"_s}));

    // Encoding it anew would make a sound file of what is left of it: that is told.
    session.person.buttonAnswers = {1};
    encode({cut});
    EXPECT_NE(failures(), QString());
    EXPECT_TRUE(QFile::exists(cut));
}

TEST_F(Conversions, FlacOverItselfStays)
{
    const QString flac = flacOf(u"a"_s);
    ASSERT_EQ(link(flac.toUtf8().constData(), (out + u"/a.flac"_s).toUtf8().constData()), 0);
    deleteOriginals();
    session.person.buttonAnswers = {1};
    encode({flac});
    EXPECT_EQ(failures(), QString());
    session.controller.encodeTab().sourceEncodeButton().setOn(false);
    session.controller.encodeTab().addFiles({flac});
    session.person.textAnswers = {out};
    session.person.buttonAnswers = {1};
    run(session.controller.encodeTab());
    ASSERT_EQ(namesIn(out), QStringList{u"a.flac"_s});
    session.controller.decodeTab().deleteOriginalsButton().setOn(false);
    decode({out + u"/a.flac"_s}, u"WAV"_s);
    EXPECT_TRUE(readWav(out + u"/a.wav"_s) == makeAudio({.frames = 30'000}));
}

TEST_F(Conversions, ADecodeNeverReplacesAFile)
{
    writeAiff(music(u"a.aiff"_s), {.frames = 3000});
    for (const QString &format : {u"FLAC"_s, u"SHN"_s, u"WV"_s, u"TTA"_s, u"APE"_s, u"M4A"_s}) {
        encode({music(u"a.aiff"_s)}, format);
    }
    writeFile(out + u"/a.wav"_s, "precious");
    deleteOriginals();
    for (const QString &source : namesIn(session.music)) {
        constexpr int skip = 0;
        session.person.buttonAnswers = {skip};
        decode({music(source)}, u"WAV"_s);
        EXPECT_TRUE(session.ended.empty()) << source.toStdString();
        EXPECT_TRUE(QFile::exists(music(source)));
        EXPECT_EQ(readFile(out + u"/a.wav"_s), QByteArray("precious"));
    }
}

TEST_F(Conversions, EveryFormatIsMadeAndDecoded)
{
    const AudioShape shapes[] = {{.bitsPerSample = 16, .frames = 4097},
                                 {.bitsPerSample = 24, .frames = 4097}};
    const QStringList formats{u"SHN"_s, u"WV"_s, u"TTA"_s, u"APE"_s, u"M4A"_s, u"FLAC"_s};
    TagsObject tags;
    tags.setTitleText(u"Gl\u00fcck 50%"_s);
    tags.setAlbumArt(QImage(8, 6, QImage::Format_RGB32));
    for (const AudioShape &shape : shapes) {
        const Audio audio = makeAudio(shape);
        for (const QString &format : formats.mid(shape.bitsPerSample == 16 ? 0 : 1)) {
            SCOPED_TRACE(format.toStdString());
            writeAiff(music(u"a.aif"_s), shape);
            ASSERT_TRUE(TagLibTagsHelper().writeTagsForAIFFFile(music(u"a.aif"_s), tags));
            encode({music(u"a.aif"_s)}, format);
            EXPECT_EQ(failures(), QString());
            const QString encoded = music(u"a."_s + format.toLower());
            EXPECT_EQ(namesIn(session.music).size(), 2) << "only source and output";
            const auto carried = TagCopy::read(formatOf(encoded), encoded);
            EXPECT_EQ(carried->titleText(), format == u"SHN" ? QString() : tags.titleText());
            EXPECT_EQ(!carried->albumArt().isNull(), format != u"SHN");

            decode({encoded}, u"AIFF"_s);
            EXPECT_EQ(failures(), QString());
            EXPECT_TRUE(readAiff(out + u"/a.aiff"_s) == audio);
            deleteOriginals();
            if (format != u"SHN") {
                session.person.buttonAnswers = {1}; // that its tags are lost
            }
            decode({encoded}, u"WAV"_s);
            EXPECT_EQ(failures(), QString());
            EXPECT_TRUE(readWav(out + u"/a.wav"_s) == audio);
            EXPECT_EQ(namesIn(session.music), QStringList{u"a.aif"_s})
                << "the original goes when its job is done";
            EXPECT_EQ(namesIn(out).size(), 2);
            session.controller.encodeTab().deleteOriginalsButton().setOn(false);
            session.controller.decodeTab().deleteOriginalsButton().setOn(false);
            QFile::remove(out + u"/a.wav"_s);
            QFile::remove(out + u"/a.aiff"_s);
        }
    }
}

TEST_F(Conversions, FormatsBecomeOneAnotherWithTheirTags)
{
    const QString title = u"\u6b4c"_s;
    const QStringList formats{u"FLAC"_s, u"SHN"_s, u"WV"_s, u"TTA"_s, u"APE"_s, u"M4A"_s};
    for (qsizetype way = 0; way < formats.size() * formats.size(); ++way) {
        const QString &from = formats[way / formats.size()];
        const QString &to = formats[way % formats.size()];
        if (from == to) {
            continue;
        }
        SCOPED_TRACE((from + u" to "_s + to).toStdString());
        writeWav(music(u"a.wav"_s), {.frames = 3000});
        encode({music(u"a.wav"_s)}, from);
        QFile::remove(music(u"a.wav"_s));
        const QString source = music(u"a."_s + from.toLower());
        const QString output = music(u"a."_s + to.toLower());
        const bool tagged = from != u"SHN";
        if (tagged) {
            TagsObject tags;
            tags.setTitleText(title);
            TagCopy::write(formatOf(source), source, tags);
        }
        encode({source}, to);
        EXPECT_EQ(failures(), QString());
        EXPECT_EQ(namesIn(session.music).size(), 2);
        EXPECT_EQ(TagCopy::read(formatOf(output), output)->titleText(),
                  tagged && to != u"SHN" ? title : QString());
        decode({output}, u"WAV"_s);
        EXPECT_TRUE(readWav(out + u"/a.wav"_s) == makeAudio({.frames = 3000}));
        for (const QString &file : {source, output, out + u"/a.wav"_s}) {
            EXPECT_TRUE(QFile::remove(file));
        }
    }
}

TEST_F(Conversions, WhatAFormatCantHoldStaysAsItWas)
{
    writeWav(music(u"wide.wav"_s), {.bitsPerSample = 24, .frames = 3000});
    writeWav(music(u"surround.wav"_s), {.channels = 6, .frames = 3000});
    writeFile(music(u"other.ape"_s), "not audio");
    writeFile(music(u"junk.wv"_s), "not audio");
    writeWav(music(u"taken.wav"_s), {.frames = 3000});
    writeFile(music(u"taken.wv"_s), "precious");
    writeFile(music(u"taken.shn"_s), "precious");
    const QStringList before = namesIn(session.music);
    deleteOriginals();
    const std::tuple<QString, QString, QString> cases[] = {
        {u"wide.wav"_s, u"SHN"_s, u"has samples of 24 bits; SHN holds 8, 16 bits"_s},
        {u"surround.wav"_s, u"APE"_s, u"has 6 channels; APE holds at most 2"_s},
        {u"other.ape"_s, u"WV"_s, u"holds no audio of a kind that can be read"_s},
        {u"junk.wv"_s, u"FLAC"_s, u"holds no audio of a kind that can be read"_s},
    };
    for (const auto &[source, format, reason] : cases) {
        encode({music(source)}, format);
        EXPECT_TRUE(failures().contains(reason)) << source.toStdString() << failures().toStdString();
        EXPECT_EQ(namesIn(session.music), before);
    }
    for (const QString &format : {u"WV"_s, u"SHN"_s}) {
        constexpr int cancel = 3;
        session.person.buttonAnswers = {cancel};
        encode({music(u"taken.wav"_s)}, format);
        EXPECT_TRUE(session.ended.empty());
        session.controller.encodeTab().clearFiles();
        EXPECT_EQ(namesIn(session.music), before);
    }
    EXPECT_EQ(readFile(music(u"taken.wv"_s)) + readFile(music(u"taken.shn"_s)),
              QByteArray("preciousprecious"));
}

TEST_F(Conversions, ShortenFilesGetTheirMd5List)
{
    writeWav(music(u"a.wav"_s), {.frames = 1000});
    writeWav(music(u"b.wav"_s), {.frames = 1000, .seed = 2});
    session.controller.encodeTab().generateMD5Button().setOn(true);
    session.preferences.setValue(u"checksumFileUsesOutputDirName"_s, true);
    encode({session.music}, u"SHN"_s);
    EXPECT_EQ(failures(), QString());
    const QByteArray list = readFile(music(u"music.md5"_s));
    for (const QString &name : {u"a.shn"_s, u"b.shn"_s}) {
        const auto digest = QCryptographicHash::hash(readFile(music(name)), QCryptographicHash::Md5).toHex();
        EXPECT_TRUE(list.contains(digest + " *" + name.toUtf8())) << list.constData();
    }
}

} // namespace kruv::test
