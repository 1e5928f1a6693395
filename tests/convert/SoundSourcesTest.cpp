// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioFiles.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/Proof.h"
#include "convert/FixTask.h"
#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "formats/TagLosses.h"
#include "formats/flac/FlacOptions.h"
#include "platform/Resources.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "tags/TagAccess.h"

#include <QFile>
#include <QProcess>
#include <QtEndian>

#include <algorithm>
#include <bit>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// In the widest samples.
Bytes wideSamplesOf(const QString &path)
{
    constexpr std::uint32_t widest = 32;
    const auto reader = AudioFiles::open(path);
    AudioStreamFormat client = reader->dataFormat().clientFormat();
    client.bitsPerChannel = widest;
    client.bytesPerFrame = widest / 8 * client.channels;
    reader->setClientFormat(client);
    Bytes all;
    Bytes piece(std::size_t{4096} * client.bytesPerFrame);
    while (const std::size_t got = reader->read(piece)) {
        all.insert(all.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(got));
    }
    return all;
}

Bytes outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(-1);
    EXPECT_EQ(process.exitCode(), 0) << program.toStdString() << ' '
                                     << process.readAllStandardError().constData();
    const QByteArray output = process.readAllStandardOutput();
    return {output.begin(), output.end()};
}

/// What a job left that has ended.
struct End
{
    bool failed = true;
    QString said = {};
    QStringList remarks = {};
    std::optional<DamageNote> damage = {};
    ProofNote proof = {};
};

class SoundSources : public testing::Test
{
protected:
    SoundSources()
    {
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, [this](KruvTask &job) {
            end = {job.error(), job.results()->results(job), job.remarks(), job.damage(), job.proof()};
        });
    }

    const End &run(const std::shared_ptr<KruvTask> &job)
    {
        engine.queue.addTask(job);
        EXPECT_TRUE(engine.runToEnd());
        return end;
    }
    const End &encode(const Format &format, const QString &source, const QString &output)
    {
        return run(format.encode(&engine.queue, {.source = source, .output = output}));
    }
    /// A sound file, and the WAV that it was made from.
    QString made(const Format &format, const AudioShape &shape)
    {
        writeWav(wav, shape);
        QString path = engine.folder.file(u"made."_s + format.extension());
        QFile::remove(path);
        EXPECT_FALSE(encode(format, wav, path).failed) << end.said.toStdString();
        return path;
    }

    Engine engine;
    const QString wav = engine.folder.file(u"made.wav"_s);
    End end;
};

QByteArray id3v1Tag()
{
    return ("TAG" + QByteArray("Old title")).leftJustified(128, '\0');
}

QByteArray id3v2Tag()
{
    const QByteArray title("TIT2\0\0\0\x04\0\0\x03Old", 14);
    return QByteArray("ID3\x04\0\0\0\0\0", 9) + static_cast<char>(title.size()) + title;
}

/// An empty one; others differ in their length only.
QByteArray apeTag()
{
    return QByteArray("APETAGEX\xD0\x07\0\0\x20\0\0\0\0\0\0\0\0\0\0\0", 24) + QByteArray(8, '\0');
}

/// Stereo, louder than full scale here and there.
QByteArray floatWav()
{
    constexpr qsizetype kindOfSamples = 44;
    Audio audio = makeAudio({.frames = 5'000});
    audio.bitsPerSample = 32;
    for (std::int32_t &sample : audio.samples) {
        sample = std::bit_cast<std::int32_t>(static_cast<float>(sample) / 30'000.0F);
    }
    QByteArray bytes = wavBytes(audio);
    bytes[kindOfSamples] = 3;
    return bytes;
}

/// How a codec's own tool makes a WAV.
struct OwnDecoder
{
    const Format *format;
    const char *tool;
    const char *arguments; ///< with places for the source and the WAV
};

} // namespace

TEST_F(SoundSources, AreReadToTheirEndWhereTheHeaderLeavesTheLengthOpen)
{
    struct
    {
        const char *name;
        const char *chunk;
        std::uint32_t size;
    } const lengths[] = {{"zero.wav", "data", 0},
                         {"streamed.wav", "data", 0xFFFFFFFF},
                         {"round.wav", "data", 0x7FFFF000},
                         {"zero.aiff", "SSND", 0},
                         {"zero.shn", "data", 0}};
    const Audio audio = makeAudio({.frames = 5'000});
    const QString whole = engine.folder.write(u"whole.wav"_s, wavBytes(audio));
    for (const auto &[name, chunk, size] : lengths) {
        SCOPED_TRACE(name);
        const QString file = QString::fromLatin1(name);
        QByteArray bytes = file.endsWith(u"aiff") ? aiffBytes(audio) : wavBytes(audio);
        qToLittleEndian(size, bytes.data() + bytes.indexOf(chunk) + 4);
        const QString source = engine.folder.write(file, bytes);
        if (file.endsWith(u"shn")) {
            outputOf(toolPath(u"shorten"_s), {engine.folder.write(u"open.wav"_s, bytes), source});
        }
        for (const Format *target : {&flacFormat, &wavpackFormat}) {
            const QString output = engine.folder.file(file + u'.' + target->extension());
            encode(*target, source, output);
            ASSERT_FALSE(end.failed) << end.said.toStdString();
            EXPECT_EQ(wideSamplesOf(output), wideSamplesOf(whole));
            EXPECT_TRUE(end.remarks.size() == 1 && end.remarks[0].contains(source));
        }
        const QString out = engine.folder.makeFolder(file + u" fixed"_s);
        run(std::make_shared<FixTask>(
            &engine.queue,
            FixTask::Request{.fileNames = {source, whole}, .target = &wavFormat, .outputPath = out}, [] {}));
        EXPECT_FALSE(end.failed) << end.said.toStdString();
        EXPECT_GT(wideSamplesOf(out + u'/' + QFileInfo(source).completeBaseName() + u".wav"_s).size(), 0U);
    }
}

TEST_F(SoundSources, WithoutAudioAreRefused)
{
    const QString source = engine.folder.write(u"none.wav"_s, wavBytes(makeAudio({.frames = 0})));
    for (const Format *target : Formats::made(false)) {
        const QString output = engine.folder.file(u"none."_s + target->extension());
        EXPECT_TRUE(encode(*target, source, output).failed);
        EXPECT_EQ(end.said, source + u" holds no audio.\n"_s);
        EXPECT_FALSE(QFile::exists(output));
    }
}

/// The encoder takes FLAC as it decodes, whatever checksum is in it.
TEST_F(SoundSources, WithAWrongChecksumBecomeNoOtherFlac)
{
    constexpr qsizetype digest = 26; // of the file
    const QString source = made(flacFormat, {.frames = 5'000});
    QByteArray bytes = readFile(source);
    bytes[digest] = static_cast<char>(bytes[digest] ^ 1);
    writeFile(source, bytes);
    const QString output = engine.folder.file(u"again.flac"_s);
    EXPECT_TRUE(encode(flacFormat, source, output).failed);
    EXPECT_TRUE(end.said.startsWith(source + u" is damaged: "_s)) << end.said.toStdString();
    EXPECT_FALSE(QFile::exists(output));
}

TEST_F(SoundSources, ThatAreDecodedThroughErrorsTellWhereTheyAreDamaged)
{
    constexpr std::size_t frames = 60'000;
    const QString source = made(flacFormat, {.frames = frames});
    const Bytes sound = wideSamplesOf(source);
    QByteArray bytes = readFile(source);
    bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 4);
    writeFile(source, bytes);
    const QString output = engine.folder.file(u"through.wav"_s);
    OptionValues options;
    options.set(FlacOptions::throughErrors, 1);
    run(flacFormat.decode(&engine.queue, {.source = source, .output = output, .options = options}));
    EXPECT_TRUE(end.failed && end.said.contains(u" is damaged: of 60000 samples in each channel "_s))
        << end.said.toStdString();
    ASSERT_TRUE(end.damage && !end.damage->places.empty());
    EXPECT_LT(end.damage->damagedSamples(), static_cast<std::int64_t>(frames / 2));
    const Bytes decoded = wideSamplesOf(output);
    ASSERT_EQ(decoded.size(), sound.size());
    const std::size_t frameSize = sound.size() / frames;
    const auto isSame = [&](std::size_t begin, std::size_t end) {
        return std::ranges::equal(std::span(sound).subspan(begin, end - begin),
                                  std::span(decoded).subspan(begin, end - begin));
    };
    std::size_t at = 0;
    for (const DamageNote::Place &place : end.damage->places) {
        const auto begin = static_cast<std::size_t>(place.firstSample) * frameSize;
        const auto behind = begin + static_cast<std::size_t>(place.samples) * frameSize;
        EXPECT_TRUE(isSame(at, begin));
        EXPECT_FALSE(isSame(begin, behind));
        at = behind;
    }
    EXPECT_TRUE(isSame(at, sound.size()));
}

/// The tools call such a file damaged, refuse it, or drop the tags without a word.
TEST_F(SoundSources, WithTagsAroundFlacAreReadAndThatIsSaid)
{
    const struct
    {
        const char *what;
        QByteArray before;
        QByteArray behind;
        QStringList named;
    } cases[] = {
        {"ID3v1", {}, id3v1Tag(), {u"an ID3v1 tag behind"_s}},
        {"ID3v2", id3v2Tag(), {}, {u"an ID3v2 tag before"_s}},
        {"all", id3v2Tag(), apeTag() + id3v1Tag(), {u"ID3v2"_s, u"an APEv2 tag behind"_s, u"ID3v1"_s}},
    };
    const QByteArray flac = readFile(made(flacFormat, {.frames = 60'000}));
    const Bytes sound = wideSamplesOf(wav);
    const auto test = [this](const QString &path) {
        const auto results = std::make_shared<KruvTaskResults>();
        const auto job = flacFormat.test(&engine.queue, path, results);
        results->addTaskInSet(*job);
        return run(job);
    };
    for (const auto &[what, before, behind, named] : cases) {
        SCOPED_TRACE(what);
        const QString source = engine.folder.write(u"tagged.flac"_s, before + flac + behind);
        for (const Format *target : {&wavFormat, &flacFormat, &wavpackFormat, &ttaFormat}) {
            const ConversionRequest request{.source = source,
                                            .output = engine.folder.file(u"out."_s + target->extension())};
            run(target->encode ? target->encode(&engine.queue, request)
                               : flacFormat.decode(&engine.queue, request));
            ASSERT_FALSE(end.failed) << end.said.toStdString();
            EXPECT_TRUE(wideSamplesOf(request.output) == sound);
            ASSERT_EQ(end.remarks.size(), 1);
            for (const QString &each : named) {
                EXPECT_TRUE(end.remarks[0].contains(each)) << end.remarks[0].toStdString();
            }
            QFile::remove(request.output);
        }
        EXPECT_FALSE(test(source).failed);
        EXPECT_TRUE(end.said.contains(u"tagged.flac: ok\n"_s)) << end.said.toStdString();
        EXPECT_TRUE(TagLosses::ofFiles({source}, {.tags = &TagAccesses::flac}, [] { return false; })
                        .value(source)
                        .around);
    }
    for (const QByteArray &damaged : {flac.first(flac.size() / 2), flac + QByteArray(100, 'x')}) {
        EXPECT_TRUE(test(engine.folder.write(u"tagged.flac"_s, damaged + id3v1Tag())).failed);
    }
}

TEST_F(SoundSources, OfFloatingPointStayAsTheyAreInWavPackAlone)
{
    const QString source = engine.folder.write(u"float.wav"_s, floatWav());
    const auto deleting = [&](const Format &format, const QString &output) {
        const auto job =
            format.encode(&engine.queue, {.source = source, .output = engine.folder.file(output)});
        job->setDeleteOriginal(true);
        return run(job);
    };
    EXPECT_TRUE(deleting(flacFormat, u"float.flac"_s).failed);
    EXPECT_TRUE(end.said.contains(u"has floating-point samples of 32 bits"_s)) << end.said.toStdString();
    EXPECT_TRUE(QFile::exists(source));
    EXPECT_FALSE(deleting(wavpackFormat, u"float.wv"_s).failed) << end.said.toStdString();
    EXPECT_EQ(end.proof.kind, u"same-audio"_s);
    EXPECT_FALSE(QFile::exists(source));

    // One sample that would be the same as an integer of 32 bits is seen.
    QByteArray other = floatWav();
    const QString expected = engine.folder.write(u"other.wav"_s, other);
    const auto sameAudio = [&] {
        return Proof::sameAudio({.sources = {expected}, .outputs = {engine.folder.file(u"float.wv"_s)}},
                                [](double) { return true; });
    };
    EXPECT_TRUE(sameAudio());
    other[other.size() - 4] = static_cast<char>(other[other.size() - 4] ^ 1);
    writeFile(expected, other);
    EXPECT_THROW(sameAudio(), std::runtime_error);
}

TEST_F(SoundSources, WithoutASampleRateAreNoAiff)
{
    const QString path = made(flacFormat, {.frames = 5'000});
    QByteArray bytes = readFile(path);
    constexpr qsizetype rate = 18; // 20 bits of STREAMINFO
    bytes[rate] = bytes[rate + 1] = '\0';
    bytes[rate + 2] = static_cast<char>(bytes[rate + 2] & 0x0F);
    writeFile(path, bytes);
    const QString output = engine.folder.file(u"out.aiff"_s);
    run(flacFormat.decode(&engine.queue, {.source = path, .output = output}));
    EXPECT_TRUE(end.failed && end.said.contains(u"states no sample rate"_s)) << end.said.toStdString();
    EXPECT_FALSE(QFile::exists(output));
}

TEST_F(SoundSources, AreTheSameToOurDecodersToFfmpegAndToTheCodecsOwnTool)
{
    const OwnDecoder owns[] = {
        {&flacFormat, "flac", "-s -d %1 -o %2"}, {&wavpackFormat, "wvunpack", "-q %1 -o %2"},
        {&ttaFormat, "ttaenc", "-d -o %2 %1"},   {&monkeysAudioFormat, "mac", "%1 %2 -d"},
        {&shortenFormat, "shorten", "-x %1 %2"}, {&appleLosslessFormat, nullptr, nullptr}};
    const AudioShape shapes[] = {
        {.frames = 9'001},
        {.sampleRate = 48'000, .channels = 1, .frames = 5'000, .signal = Signal::Sine},
        {.sampleRate = 96'000, .bitsPerSample = 24, .frames = 7'001}};
    for (const auto &[format, tool, arguments] : owns) {
        for (const AudioShape &shape : shapes) {
            if (std::ranges::count(format->limits->bits, static_cast<int>(shape.bitsPerSample)) == 0) {
                continue;
            }
            SCOPED_TRACE(std::string(format->id) + " of " + std::to_string(shape.bitsPerSample) + " bits");
            const QString source = made(*format, shape);
            const Bytes ours = wideSamplesOf(source);
            EXPECT_TRUE(ours == wideSamplesOf(wav));
            EXPECT_TRUE(ours ==
                        outputOf(u"ffmpeg"_s, {u"-v"_s, u"error"_s, u"-nostdin"_s, u"-i"_s, source, u"-c:a"_s,
                                               u"pcm_s32le"_s, u"-f"_s, u"s32le"_s, u"-"_s}));
            if (tool != nullptr) {
                const QString own = engine.folder.file(u"own.wav"_s);
                QFile::remove(own);
                outputOf(toolPath(QString::fromLatin1(tool)),
                         QString::fromLatin1(arguments).arg(source, own).split(u' '));
                EXPECT_TRUE(ours == wideSamplesOf(own));
            }
        }
    }
}

} // namespace kruv::test
