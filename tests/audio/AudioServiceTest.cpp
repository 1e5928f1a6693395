// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CoreAudioHelper.h"
#include "audio/EncodeCoreAudioSync.h"
#include "support/Audio.h"
#include "support/TaggedAudio.h"
#include "tasks/KruvTask.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class AudioService : public testing::Test
{
protected:
    /// The kind of the output follows its extension. Returns the job's text, empty for a success.
    QString convert(const QString &from, const QString &to, FormatType pcmOr = FormatType::LinearPcm)
    {
        const bool mp4 = to.endsWith(u".m4a"_s);
        const FormatType type = mp4 && pcmOr == FormatType::LinearPcm ? FormatType::AppleLossless : pcmOr;
        const FileType file = mp4                       ? FileType::M4af
                              : to.endsWith(u".aiff"_s) ? FileType::Aiff
                                                        : FileType::Wave;
        const auto task = std::make_shared<KruvTask>(nullptr);
        EncodeCoreAudioSync conversion(*task, from, to, type, file);
        const bool done = conversion.doEncodeCall();
        EXPECT_EQ(done, !task->error());
        return done ? QString() : task->results()->results(*task);
    }
    QString file(const QString &name) const { return folder.file(name); }
    QString ffmpeg(const QString &name, const QStringList &options, const QString &source = u"s.wav"_s)
    {
        toolOutput(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-y"_s, u"-i"_s, file(source)} + options +
                                    QStringList{file(name)});
        return file(name);
    }
    qint64 framesOf(const QString &name) { return CoreAudioHelper::getFormatInfo(file(name)).totalSamples; }

    TemporaryFolder folder;
};

} // namespace

TEST_F(AudioService, EveryShapeIsTheSameInEveryFile)
{
    // The ends of Apple Lossless packets, and the few frames that are left over for the last.
    for (const std::size_t frames : {0U, 1U, 4095U, 4096U, 4097U}) {
        for (const unsigned bits : {8U, 16U, 24U, 32U}) {
            for (const unsigned channels : {1U, 2U, 4U, 5U, 6U}) {
                const unsigned rate = channels == 1 ? 8000 : bits == 24 ? 192'000 : 44'100;
                const AudioShape shape{rate, channels, bits, frames, Signal::Noise, 7};
                SCOPED_TRACE(testing::Message() << frames << " frames, " << bits << " bit, " << channels);
                const Audio audio = makeAudio(shape);
                QFile::remove(file(u"s.m4a"_s));
                writeFile(file(u"s.wav"_s), wavBytes(audio));
                ASSERT_EQ(convert(file(u"s.wav"_s), file(u"s.aiff"_s)), QString());
                ASSERT_EQ(convert(file(u"s.aiff"_s), file(u"back.wav"_s)), QString());
                EXPECT_EQ(readFile(file(u"s.aiff"_s)), aiffBytes(audio));
                EXPECT_EQ(readFile(file(u"back.wav"_s)).size(), wavBytes(audio).size());
                EXPECT_TRUE(readWav(file(u"back.wav"_s)) == audio);
                const QString failure = convert(file(u"s.aiff"_s), file(u"s.m4a"_s));
                if (bits == 8 || bits == 32) {
                    EXPECT_TRUE(failure.contains(u"Apple Lossless is written with 16 or 24 bits"_s));
                    EXPECT_FALSE(QFile::exists(file(u"s.m4a"_s)));
                    continue;
                }
                ASSERT_EQ(failure, QString());
                EXPECT_TRUE(CoreAudioHelper::isAppleLossless(file(u"s.m4a"_s)));
                EXPECT_EQ(framesOf(u"s.m4a"_s), static_cast<qint64>(frames));
                ASSERT_EQ(convert(file(u"s.m4a"_s), file(u"lossless.wav"_s)), QString());
                EXPECT_TRUE(readWav(file(u"lossless.wav"_s)) == audio);
            }
        }
    }
}

TEST_F(AudioService, AnIndependentDecoderHearsTheSame)
{
    writeWav(file(u"s.wav"_s), {.sampleRate = 96000, .channels = 6, .frames = 20'001});
    const QByteArray digest = decodedDigest(file(u"s.wav"_s));
    for (const QString &name : {u"o.m4a"_s, u"o.aiff"_s}) {
        ASSERT_EQ(convert(file(u"s.wav"_s), file(name)), QString());
        EXPECT_EQ(decodedDigest(file(name)), digest) << name.toStdString();
    }
    ASSERT_EQ(
        convert(ffmpeg(u"sowt.aif"_s, {u"-c:a"_s, u"pcm_s16le"_s, u"-f"_s, u"aiff"_s}), file(u"o.wav"_s)),
        QString());
    EXPECT_EQ(decodedDigest(file(u"o.wav"_s)), decodedDigest(file(u"sowt.aif"_s)));
}

TEST_F(AudioService, ProbesGoByContent)
{
    writeWav(file(u"s.wav"_s), {.bitsPerSample = 24, .frames = 500});
    writeAiff(file(u"24.raw"_s), {.bitsPerSample = 24, .frames = 500});
    writeFile(file(u"junk.wav"_s), QByteArray("RIFF\xff\xff\xff\xffWAVEfmt ") + QByteArray(3000, '\xfe'));
    writeFile(file(u"junk.m4a"_s), QByteArray("\0\0\0\x20"
                                              "ftypM4A ",
                                              12) +
                                       QByteArray(3000, '\x01'));
    struct
    {
        QString path;
        const char *answers; // isAppleLossless isAIFC isAiffOrWav isWav isAiff is24BitAIFF
    } const rows[] = {
        {file(u"s.wav"_s), "001100"},
        {file(u"24.raw"_s), "001011"},
        {ffmpeg(u"sowt.aif"_s, {u"-c:a"_s, u"pcm_s16le"_s, u"-f"_s, u"aiff"_s}), "011100"},
        {ffmpeg(u"float.wav"_s, {u"-c:a"_s, u"pcm_f32le"_s}), "000000"},
        {ffmpeg(u"alac.m4a"_s, {u"-c:a"_s, u"alac"_s}), "100000"},
        {ffmpeg(u"aac.m4a"_s, {u"-c:a"_s, u"aac"_s}), "000000"},
        {file(u"junk.wav"_s), "000000"},
        {file(u"junk.m4a"_s), "000000"},
        {folder.path(), "000000"},
        {u"/dev/zero"_s, "000000"},
        {file(u"missing"_s), "000000"},
    };
    for (const auto &[path, answers] : rows) {
        std::string given;
        for (const auto probe :
             {CoreAudioHelper::isAppleLossless, CoreAudioHelper::isAIFC, CoreAudioHelper::isAiffOrWav,
              CoreAudioHelper::isWav, CoreAudioHelper::isAiff, CoreAudioHelper::is24BitAIFF}) {
            given += probe(path) ? '1' : '0';
        }
        EXPECT_EQ(given, answers) << path.toStdString();
    }
    EXPECT_DOUBLE_EQ(CoreAudioHelper::getFormatInfo(file(u"alac.m4a"_s)).time(), 500.0 / 44100.0);
}

TEST_F(AudioService, WhatCannotBeDoneIsSaidAndLeavesNothing)
{
    writeWav(file(u"s.wav"_s), {.frames = 20'000});
    const QByteArray wav = readFile(file(u"s.wav"_s));
    const QString alac = ffmpeg(u"a.m4a"_s, {u"-c:a"_s, u"alac"_s, u"-movflags"_s, u"faststart"_s});
    const QByteArray m4a = readFile(alac);
    // The payload of a compact disc with DTS: PCM to every tool that must not lose it.
    QByteArray dts = wav;
    for (qsizetype i = 44; i + 8 < dts.size(); i += 2048) {
        dts.replace(i, 8, QByteArray::fromHex("fe7f018001fc3cf0"));
    }
    writeFile(file(u"dts.wav"_s), dts);
    EXPECT_EQ(convert(file(u"dts.wav"_s), file(u"dts.aiff"_s)), QString());
    EXPECT_EQ(convert(file(u"dts.aiff"_s), file(u"back.wav"_s)), QString());
    EXPECT_EQ(readFile(file(u"back.wav"_s)), dts);
    ASSERT_TRUE(QFile::link(file(u"s.wav"_s), file(u"link.wav"_s)));
    struct
    {
        QString source;
        QString output;
        const char *said;
    } const rows[] = {
        {file(u"missing.wav"_s), file(u"o.wav"_s), "ExtAudioFileOpenURL failed"},
        {folder.write(u"cut.m4a"_s, m4a.first(m4a.size() - 9000)), file(u"o.wav"_s),
         "ExtAudioFileRead failed"},
        {folder.write(u"head.m4a"_s, m4a.first(200)), file(u"o.wav"_s), "ExtAudioFileOpenURL failed"},
        {folder.write(u"cut.wav"_s, wav.first(50'000)), file(u"o.aiff"_s), "less audio than its header"},
        {ffmpeg(u"hot.wav"_s, {u"-af"_s, u"volume=3"_s, u"-c:a"_s, u"pcm_f32le"_s}), file(u"o.wav"_s),
         "beyond full scale"},
        {file(u"s.wav"_s), file(u"none/o.wav"_s), "ExtAudioFileCreateWithURL failed"},
        {file(u"s.wav"_s), u"/dev/full"_s, "No space left on device"},
        {file(u"s.wav"_s), file(u"link.wav"_s), "written over the file"},
    };
    for (const auto &[source, output, said] : rows) {
        const QString text = convert(source, output);
        EXPECT_TRUE(text.startsWith(u"Error encoding %1 to "_s.arg(source))) << text.toStdString();
        EXPECT_TRUE(text.contains(QLatin1String(said))) << text.toStdString();
        EXPECT_FALSE(QFile::exists(file(u"o.wav"_s)) || QFile::exists(file(u"o.aiff"_s)))
            << source.toStdString();
    }
    EXPECT_EQ(readFile(file(u"s.wav"_s)), wav);
    for (const QString &name : {u"o.m4a"_s, u"o.aiff"_s}) {
        EXPECT_TRUE(
            withFileSizeLimit(30'000, [&] { return !convert(file(u"s.wav"_s), file(name)).isEmpty(); }));
        EXPECT_FALSE(QFile::exists(file(name)));
    }
}

TEST_F(AudioService, ACancelledConversionKeepsItsPart)
{
    writeWav(file(u"s.wav"_s));
    const auto task = std::make_shared<KruvTask>(nullptr);
    task->cancelTask();
    EncodeCoreAudioSync conversion(*task, file(u"s.wav"_s), file(u"o.wav"_s), FormatType::LinearPcm,
                                   FileType::Wave);
    EXPECT_FALSE(conversion.doEncodeCall());
    EXPECT_FALSE(task->error());
    EXPECT_EQ(readWav(file(u"o.wav"_s)).frames(), 0U);
}

TEST_F(AudioService, AacComesDownToTheRatesOfPlayers)
{
    for (const auto &[rate, expected] : {std::pair(192'000U, 48'000), std::pair(96'000U, 48'000),
                                         std::pair(88'200U, 44'100), std::pair(32'000U, 32'000)}) {
        writeWav(file(u"s.wav"_s), {.sampleRate = rate, .bitsPerSample = 24, .frames = rate});
        ASSERT_EQ(convert(file(u"s.wav"_s), file(u"o.m4a"_s), FormatType::Aac), QString());
        const AudioFormatObject info = CoreAudioHelper::getFormatInfo(file(u"o.m4a"_s));
        EXPECT_EQ(info.sampleRate, expected);
        EXPECT_DOUBLE_EQ(info.time(), 1.0) << "no priming, no padding";
    }
    writeWav(file(u"s.wav"_s), {.sampleRate = 352'800, .frames = 1000});
    EXPECT_TRUE(convert(file(u"s.wav"_s), file(u"x.m4a"_s), FormatType::Aac).contains(u"352800 Hz"_s));
}

TEST_F(AudioService, AacHoldsRatesAndFollowsQuality)
{
    constexpr qint64 seconds = 4;
    writeWav(file(u"s.wav"_s), {.frames = seconds * 44'100, .signal = Signal::Sine});
    struct Wanted
    {
        std::uint32_t mode = 0, bitrate = 0, quality = 0;
    };
    const auto kilobits = [&](const Wanted &wanted) {
        const auto task = std::make_shared<KruvTask>(nullptr);
        EncodeCoreAudioSync conversion(*task, file(u"s.wav"_s), file(u"o.m4a"_s), FormatType::Aac,
                                       FileType::M4af);
        conversion.setMode(wanted.mode);
        conversion.setBitrate(wanted.bitrate);
        conversion.setQuality(wanted.quality);
        EXPECT_TRUE(conversion.doEncodeCall());
        return readFile(file(u"o.m4a"_s)).size() * 8 / seconds / 1000;
    };
    for (const std::uint32_t mode : {0U, 1U, 2U}) {
        EXPECT_NEAR(static_cast<double>(kilobits({.mode = mode, .bitrate = 96'000})), 96.0, 12.0) << mode;
    }
    EXPECT_LT(kilobits({.mode = 3, .quality = 1}), kilobits({.mode = 3, .quality = 64}));
    EXPECT_LT(kilobits({.mode = 3, .quality = 64}), kilobits({.mode = 3, .quality = 127}));
}

} // namespace kruv::test
