// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"

#include "audio/AudioError.h"
#include "audio/ContentProbe.h"
#include "audio/CoreAudioHelper.h"
#include "audio/ExtAudioFileReader.h"
#include "support/Audio.h"
#include "support/RareAudio.h"
#include "support/TaggedAudio.h"

#include <QFile>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

using Container = AudioContent::Container;
using Codec = AudioContent::Codec;
using Kind = AudioContent::Kind;

/// What damage a format lets a reader hear.
enum class Hears {
    Nothing, ///< frames after frames, and no length
    Cuts,    ///< it states its length
    Flips,   ///< it has checksums, too
};

struct Sample
{
    const char *name;
    const char *command; ///< of ffmpeg where it begins with a dash; "IN" and "OUT" stand for the files
    const char *source;
    Container container;
    Codec codec;
    Kind kind;
    int bits; ///< 0 for lossy codecs
    Hears hears;
    QByteArray (*make)(const Audio &) = nullptr; ///< instead of a command
};

/// Whose loudness plays no part.
QByteArray oneBitAudio()
{
    QByteArray bits(70'000, Qt::Uninitialized);
    std::minstd_rand random;
    std::ranges::generate(bits, [&] { return static_cast<char>(random() >> 8); });
    return bits;
}

QByteArray makeDsf(const Audio &)
{
    return dsfBytes(oneBitAudio());
}

QByteArray makeDff(const Audio &)
{
    return dffBytes(oneBitAudio());
}

constexpr Sample samples[] = {
    {"a.flac", "-c:a flac", "16.wav", Container::Flac, Codec::Flac, Kind::Lossless, 16, Hears::Flips},
    {"b.flac", "-c:a flac -sample_fmt s32", "24.wav", Container::Flac, Codec::Flac, Kind::Lossless, 24,
     Hears::Flips},
    {"c.flac", "flac -s -f -o OUT IN", "8.wav", Container::Flac, Codec::Flac, Kind::Lossless, 8,
     Hears::Flips},
    {"d.oga", "-c:a flac -f ogg", "16.wav", Container::Ogg, Codec::Flac, Kind::Lossless, 16, Hears::Flips},
    {"a.wv", "-c:a wavpack", "16.wav", Container::WavPack, Codec::WavPack, Kind::Lossless, 16, Hears::Flips},
    {"b.wv", "wavpack -q IN -o OUT", "24.wav", Container::WavPack, Codec::WavPack, Kind::Lossless, 24,
     Hears::Flips},
    {"c.wv", "wavpack -q IN -o OUT", "8.wav", Container::WavPack, Codec::WavPack, Kind::Lossless, 8,
     Hears::Flips},
    {"d.wv", "wavpack -q IN -o OUT", "32.wav", Container::WavPack, Codec::WavPack, Kind::Lossless, 32,
     Hears::Flips},
    {"e.wv", "wavpack -q IN -o OUT", "six.wav", Container::WavPack, Codec::WavPack, Kind::Lossless, 16,
     Hears::Flips},
    {"f.wv", "wavpack -q -b320 IN -o OUT", "16.wav", Container::WavPack, Codec::WavPack, Kind::Hybrid, 16,
     Hears::Flips},
    {"a.tta", "-c:a tta", "16.wav", Container::Tta, Codec::Tta, Kind::Lossless, 16, Hears::Flips},
    {"b.tta", "ttaenc -e IN -o OUT", "24.wav", Container::Tta, Codec::Tta, Kind::Lossless, 24, Hears::Flips},
    {"c.tta", "ttaenc -e IN -o OUT", "8.wav", Container::Tta, Codec::Tta, Kind::Lossless, 8, Hears::Flips},
    {"a.ape", "mac IN OUT -c2000", "16.wav", Container::MonkeysAudio, Codec::MonkeysAudio, Kind::Lossless, 16,
     Hears::Flips},
    {"b.ape", "mac IN OUT -c1000", "24.wav", Container::MonkeysAudio, Codec::MonkeysAudio, Kind::Lossless, 24,
     Hears::Flips},
    {"c.ape", "mac IN OUT -c1000", "8.wav", Container::MonkeysAudio, Codec::MonkeysAudio, Kind::Lossless, 8,
     Hears::Flips},
    {"a.shn", "shorten IN OUT", "16.wav", Container::Shorten, Codec::Shorten, Kind::Lossless, 16,
     Hears::Cuts},
    {"b.shn", "shorten IN OUT", "8.wav", Container::Shorten, Codec::Shorten, Kind::Lossless, 8, Hears::Cuts},
    {"a.m4a", "-c:a alac", "16.wav", Container::Mp4, Codec::AppleLossless, Kind::Lossless, 16, Hears::Cuts},
    {"b.m4a", "-c:a alac", "24.wav", Container::Mp4, Codec::AppleLossless, Kind::Lossless, 24, Hears::Cuts},
    {"c.caf", "-c:a alac", "16.wav", Container::Caf, Codec::AppleLossless, Kind::Lossless, 16, Hears::Cuts},
    {"a.mlp", "-c:a mlp -strict -2", "24.wav", Container::Mlp, Codec::Mlp, Kind::Lossless, 24, Hears::Flips},
    {"a.thd", "-c:a truehd -strict -2", "24.wav", Container::Mlp, Codec::TrueHd, Kind::Lossless, 24,
     Hears::Flips},
    {"a.rf64", "-c:a pcm_s16le -rf64 always -f wav", "16.wav", Container::Rf64, Codec::Pcm, Kind::Lossless,
     16, Hears::Cuts},
    {"a.w64", "-c:a pcm_s16le", "16.wav", Container::Wave64, Codec::Pcm, Kind::Lossless, 16, Hears::Cuts},
    {"b.w64", "-c:a pcm_f32le", "24.wav", Container::Wave64, Codec::FloatPcm, Kind::Lossless, 32,
     Hears::Cuts},
    {"a.caf", "-c:a pcm_s16be", "16.wav", Container::Caf, Codec::Pcm, Kind::Lossless, 16, Hears::Cuts},
    {"b.caf", "-c:a pcm_s24le", "24.wav", Container::Caf, Codec::Pcm, Kind::Lossless, 24, Hears::Cuts},
    {"a.aiff", "-c:a pcm_s24be", "24.wav", Container::Aiff, Codec::Pcm, Kind::Lossless, 24, Hears::Cuts},
    {"b.aiff", "-c:a pcm_s32be", "six.wav", Container::Aiff, Codec::Pcm, Kind::Lossless, 32, Hears::Cuts},
    {"a.aifc", "-c:a pcm_s16le -f aiff", "16.wav", Container::Aifc, Codec::Pcm, Kind::Lossless, 16,
     Hears::Cuts},
    {"b.aifc", "-c:a pcm_f32be -f aiff", "24.wav", Container::Aifc, Codec::FloatPcm, Kind::Lossless, 32,
     Hears::Cuts},
    {"a.mp3", "-c:a libmp3lame", "16.wav", Container::MpegAudio, Codec::Mp3, Kind::Lossy, 0, Hears::Cuts},
    {"b.mp3", "-c:a libmp3lame -write_xing 0 -id3v2_version 0", "16.wav", Container::MpegAudio, Codec::Mp3,
     Kind::Lossy, 0, Hears::Nothing},
    {"a.aac", "-c:a aac -f adts", "16.wav", Container::Adts, Codec::Aac, Kind::Lossy, 0, Hears::Nothing},
    {"d.m4a", "-c:a aac", "16.wav", Container::Mp4, Codec::Aac, Kind::Lossy, 0, Hears::Cuts},
    {"a.als", "", "flat.wav", Container::Mp4, Codec::Mpeg4Als, Kind::Lossless, 16, Hears::Flips, alsBytes},
    {"b.als", "", "32m.wav", Container::Mp4, Codec::Mpeg4Als, Kind::Lossless, 32, Hears::Flips, alsBytes},
    {"c.als", "", "six.wav", Container::Mp4, Codec::Mpeg4Als, Kind::Lossless, 16, Hears::Flips, alsBytes},
    {"20.m4a", "", "20.wav", Container::Mp4, Codec::AppleLossless, Kind::Lossless, 20, Hears::Cuts,
     alacBytes},
    {"32.m4a", "", "32m.wav", Container::Mp4, Codec::AppleLossless, Kind::Lossless, 32, Hears::Cuts,
     alacBytes},
    {"a.tak", "", "steps.wav", Container::Tak, Codec::Tak, Kind::Lossless, 16, Hears::Flips, takBytes},
    {"a.dsf", "", "16.wav", Container::Dsf, Codec::Dsd, Kind::Dsd, 24, Hears::Cuts, makeDsf},
    {"a.dff", "", "16.wav", Container::Dff, Codec::Dsd, Kind::Dsd, 24, Hears::Cuts, makeDff},
    {"a.ogg", "-c:a libvorbis", "16.wav", Container::Ogg, Codec::Vorbis, Kind::Lossy, 0, Hears::Flips},
    {"a.opus", "-c:a libopus", "16.wav", Container::Ogg, Codec::Opus, Kind::Lossy, 0, Hears::Flips},
};

std::ostream &operator<<(std::ostream &out, const Sample &sample)
{
    return out << sample.name;
}

/// Everything that a reader gives, in its own width or a wider one; AudioError where it fails.
QByteArray readAll(const QString &path, unsigned width = 0)
{
    const auto reader = AudioFiles::open(path);
    AudioStreamFormat client = reader->clientFormat();
    if (width != 0) {
        client.bitsPerChannel = width;
        client.bytesPerFrame = width / 8 * client.channels;
        reader->setClientFormat(client);
    }
    QByteArray all;
    std::vector<std::uint8_t> block(std::size_t{1000} * client.bytesPerFrame);
    for (std::size_t got = block.size(); got == block.size();) {
        got = reader->read(block);
        all.append(reinterpret_cast<const char *>(block.data()), static_cast<qsizetype>(got));
    }
    return all;
}

/// In 32 bits each.
QByteArray atTheHighEnd(const Audio &audio)
{
    QByteArray bytes;
    for (const std::int32_t sample : audio.samples) {
        const auto wide = static_cast<std::uint32_t>(sample) << (32 - audio.bitsPerSample);
        bytes.append(reinterpret_cast<const char *>(&wide), sizeof wide);
    }
    return bytes;
}

bool fails(const QString &path)
{
    try {
        readAll(path);
        return false;
    } catch (const AudioError &failure) {
        EXPECT_TRUE(QString::fromUtf8(failure.what()).contains(u'\n')) << "a reason";
        return true;
    }
}

class AudioFilesOf : public testing::TestWithParam<Sample>
{
protected:
    AudioFilesOf()
        : sample(GetParam())
        , path(folder.file(QString::fromLatin1(sample.name)))
    {
        makeSource();
        if (sample.make) {
            writeFile(path, sample.make(audio));
            return;
        }
        QStringList command = QString::fromLatin1(sample.command).split(u' ');
        const QString source = folder.file(QString::fromLatin1(sample.source));
        if (command.first().startsWith(u'-')) {
            toolOutput(u"ffmpeg"_s,
                       QStringList{u"-v"_s, u"error"_s, u"-i"_s, source} + command + QStringList{path});
            return;
        }
        command.replaceInStrings(u"IN"_s, source).replaceInStrings(u"OUT"_s, path);
        const QString own = qEnvironmentVariable("KRUV_RESOURCES") + u'/' + command.first();
        toolOutput(QFile::exists(own) ? own : command.first(), command.mid(1));
    }
    void makeSource()
    {
        const std::pair<QLatin1String, AudioShape> shapes[] = {
            {QLatin1String("8.wav"),
             {.sampleRate = 22'050, .channels = 1, .bitsPerSample = 8, .frames = 22'003}},
            {QLatin1String("16.wav"), {.frames = 30'011}},
            {QLatin1String("steps.wav"), {.frames = 22'060}},
            {QLatin1String("flat.wav"), {.frames = 5'003}},
            {QLatin1String("20.wav"), {.channels = 1, .bitsPerSample = 20, .frames = 30'011}},
            {QLatin1String("24.wav"), {.sampleRate = 96'000, .bitsPerSample = 24, .frames = 30'000}},
            {QLatin1String("32.wav"), {.sampleRate = 48'000, .bitsPerSample = 32, .frames = 30'011}},
            {QLatin1String("32m.wav"), {.channels = 1, .bitsPerSample = 32, .frames = 30'011}},
            {QLatin1String("six.wav"), {.sampleRate = 48'000, .channels = 6, .frames = 12'011}},
        };
        for (const auto &[name, shape] : shapes) {
            if (name == QLatin1String(sample.source)) {
                audio = makeAudio(shape);
            }
        }
        if (QLatin1String(sample.source) == QLatin1String("steps.wav")) {
            constexpr std::size_t quarter = std::size_t{11'025} * 2;
            for (std::size_t i = 0; i < 2 * quarter; ++i) {
                audio.samples[i] = audio.samples[i / quarter * quarter + i % 2];
            }
        }
        if (QLatin1String(sample.source) == QLatin1String("flat.wav")) {
            audio.samples.resize(audio.samples.size() * 2, -1234);
        }
        if (!sample.make) {
            writeFile(folder.file(QString::fromLatin1(sample.source)), wavBytes(audio));
        }
    }
    /// The samples as the program decodes them.
    QByteArray expected() const
    {
        const QString format = sample.bits == 0   ? u"s16le"_s
                               : sample.bits == 8 ? u"s8"_s
                                                  : u"s%1le"_s.arg((sample.bits + 7) / 8 * 8);
        return toolOutput(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, path, u"-f"_s, format, u"-c:a"_s,
                                        u"pcm_"_s + format, u"-"_s});
    }

    const Sample sample;
    Audio audio;
    TemporaryFolder folder;
    const QString path;
};

} // namespace

TEST_P(AudioFilesOf, GivesTheSamplesThatFFmpegGives)
{
    const QString nameless = folder.file(u"song.wav.txt"_s);
    ASSERT_TRUE(QFile::rename(path, nameless));
    const AudioContent content = ContentProbe::of(nameless);
    EXPECT_EQ(content.container, sample.container);
    EXPECT_EQ(content.codec, sample.codec);
    EXPECT_EQ(content.kind, sample.kind);
    ASSERT_TRUE(QFile::rename(nameless, path));

    const AudioFormatObject info = CoreAudioHelper::getFormatInfo(path);
    EXPECT_EQ(info.bitsPerChannel, sample.bits);
    const QByteArray given = readAll(path);
    const auto frame = info.channels * (sample.bits == 0 ? 2 : (sample.bits + 7) / 8);
    ASSERT_GT(frame, 0);
    const bool tellsLength = info.totalSamples > 0;
    EXPECT_EQ(tellsLength, sample.hears != Hears::Nothing && sample.container != Container::Mlp);
    if (tellsLength &&
        sample.codec != Codec::AppleLossless) { // whose last packet some writers count as a whole one
        EXPECT_EQ(given.size(), info.totalSamples * frame);
    }
    // The program leaves some of the silence in that fills up the last packet.
    const QByteArray wanted = expected();
    EXPECT_TRUE(sample.kind == Kind::Lossy && tellsLength ? wanted.startsWith(given) : wanted == given);
    EXPECT_FALSE(given.isEmpty());
    if (sample.make && sample.kind == Kind::Lossless) {
        EXPECT_TRUE(readAll(path, 32) == atTheHighEnd(audio));
    }
}

TEST_P(AudioFilesOf, HearsDamage)
{
    const QByteArray whole = readFile(path);
    const QByteArray samples = readAll(path);
    if (sample.hears == Hears::Flips) {
        for (const int part : {30, 60, 95}) {
            QByteArray flipped = whole;
            char &byte = flipped[whole.size() * part / 100];
            byte = static_cast<char>(byte ^ 0x10);
            writeFile(path, flipped);
            EXPECT_TRUE(fails(path)) << part;
        }
    }
    if (sample.hears != Hears::Nothing) {
        for (const int part : {30, 70, 97}) {
            writeFile(path, whole.first(whole.size() * part / 100));
            // The last frame of an MP3 may hold nothing but padding.
            EXPECT_TRUE(fails(path) || readAll(path) == samples) << part;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Audio, AudioFilesOf, testing::ValuesIn(samples), [](const auto &info) {
    return QString::fromLatin1(info.param.name).replace(u'.', u'_').toStdString();
});

TEST(AudioFiles, MonkeysAudioOfEveryLevelGivesWhatWentIn)
{
    const TemporaryFolder folder;
    const QString wav = folder.file(u"s.wav"_s);
    const QString ape = folder.file(u"s.ape"_s);
    for (const unsigned bits : {8U, 16U, 24U}) {
        writeWav(wav, {.bitsPerSample = bits, .frames = 20'011});
        for (const int level : {1000, 2000, 3000, 4000, 5000}) {
            SCOPED_TRACE(testing::Message() << bits << " bit, level " << level);
            toolOutput(qEnvironmentVariable("KRUV_RESOURCES") + u"/mac"_s, {wav, ape, u"-c%1"_s.arg(level)});
            EXPECT_EQ(readAll(ape), readAll(wav));
            QByteArray damaged = readFile(ape);
            damaged[80] = static_cast<char>(damaged[80] ^ 1); // the seek table, which only the MD5 covers
            EXPECT_TRUE(fails(folder.write(u"damaged.ape"_s, damaged)));
        }
    }
}

TEST(AudioFiles, ShortenOfAWavWithChunksBeforeTheAudioGivesWhatWentIn)
{
    const TemporaryFolder folder;
    QByteArray wav = wavBytes(makeAudio({.frames = 20'011}));
    wav.insert(36, "LIST" + QByteArray::fromHex("07000000") + "INFOodd" + '\0');
    wav[4] = static_cast<char>(wav[4] + 16);
    const QString source = folder.write(u"s.wav"_s, wav + "id3 " + QByteArray::fromHex("02000000") + "xy");
    const QString shorten = folder.file(u"s.shn"_s);
    toolOutput(qEnvironmentVariable("KRUV_RESOURCES") + u"/shorten"_s, {source, shorten});
    EXPECT_EQ(readAll(shorten), readAll(source));
    const QByteArray whole = readFile(shorten);
    EXPECT_TRUE(fails(folder.write(u"cut.shn"_s, whole.chopped(8)))) << "behind the audio";
}

TEST(AudioFiles, OneBitAudioIsTheSameInBothOfItsContainers)
{
    const TemporaryFolder folder;
    const QString dsf = folder.write(u"s.dsf"_s, dsfBytes(oneBitAudio()));
    const QString dff = folder.write(u"s.dff"_s, dffBytes(oneBitAudio()));
    constexpr qsizetype settling = 600; // bytes in which the filters still hear what they began with
    EXPECT_EQ(readAll(dsf).size(), 35'000 * 6);
    EXPECT_EQ(readAll(dsf).sliced(settling), readAll(dff).sliced(settling));
}

TEST(AudioFiles, TagsAroundTheAudioAreNotHeard)
{
    const TemporaryFolder folder;
    writeWav(folder.file(u"s.wav"_s), {.frames = 20'000});
    const QByteArray id3v2 = "ID3" + QByteArray::fromHex("03000000000214") + QByteArray(276, '\0');
    const QByteArray id3v1 = "TAG" + QByteArray(125, 'x');
    QByteArray ape = "APETAGEX" + QByteArray::fromHex("d00700002800000000000000000000000000000000000000");
    ape = QByteArray(8, 'x') + ape;
    for (const char *extension : {"flac", "wv", "tta", "mp3", "aac"}) {
        const QString path = folder.file(u"s."_s + QString::fromLatin1(extension));
        toolOutput(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-i"_s, folder.file(u"s.wav"_s), u"-id3v2_version"_s,
                                 u"0"_s, path});
        const QByteArray samples = readAll(path);
        const QByteArray audio = readFile(path);
        for (const QByteArray &tagged : {id3v2 + audio, audio + ape + id3v1, id3v2 + id3v2 + audio + id3v1}) {
            writeFile(path, tagged);
            EXPECT_EQ(readAll(path), samples) << extension;
        }
    }
}

TEST(AudioFiles, WiderSamplesLieAtTheHighEnd)
{
    const TemporaryFolder folder;
    for (const unsigned bits : {8U, 16U, 24U}) {
        const Audio audio = makeAudio({.bitsPerSample = bits, .frames = 500});
        const QByteArray expected = atTheHighEnd(audio);
        writeFile(folder.file(u"s.wav"_s), wavBytes(audio));
        toolOutput(u"flac"_s, {u"-s"_s, u"-f"_s, folder.file(u"s.wav"_s)});
        EXPECT_EQ(readAll(folder.file(u"s.wav"_s), 32), expected) << bits;
        EXPECT_EQ(readAll(folder.file(u"s.flac"_s), 32), expected) << bits;
        if (bits > 8) {
            EXPECT_THROW(readAll(folder.file(u"s.flac"_s), bits - 8), AudioError);
        }
    }
}

TEST(AudioFiles, AFlacWhoseDigestIsOfOtherAudioIsHeard)
{
    const TemporaryFolder folder;
    writeWav(folder.file(u"s.wav"_s), {.frames = 9000});
    toolOutput(u"flac"_s, {u"-s"_s, folder.file(u"s.wav"_s)});
    const QByteArray flac = readFile(folder.file(u"s.flac"_s));
    QByteArray other = flac;
    other[8 + 18] = static_cast<char>(other[8 + 18] ^ 1);
    EXPECT_TRUE(fails(folder.write(u"other.flac"_s, other)));
    other.replace(8 + 18, 16, QByteArray(16, '\0')); // none
    EXPECT_FALSE(fails(folder.write(u"none.flac"_s, other)));
}

TEST(AudioFiles, WhatIsNoAudioIsUnknown)
{
    const TemporaryFolder folder;
    const QString pipe = folder.file(u"fifo.flac"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const QByteArray playlist = "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\n/etc/passwd\n";
    for (const QString &path :
         {pipe, folder.path(), u"/dev/zero"_s, folder.file(u"none"_s), folder.write(u"empty.wav"_s, {}),
          folder.write(u"list.mp3"_s, playlist), folder.write(u"zeros.mp3"_s, QByteArray(20'000, '\0')),
          folder.write(u"ones.mp3"_s, QByteArray(20'000, '\xFF')),
          folder.write(u"id3.mp3"_s, "ID3" + QByteArray::fromHex("030000007f7f7f7f"))}) {
        EXPECT_FALSE(ContentProbe::of(path).isKnown()) << path.toStdString();
        EXPECT_TRUE(fails(path)) << path.toStdString();
    }
}

} // namespace kruv::test
