// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The jobs on sets and the proofs that they owe: with the real tool, and with tools that are wrong.

#include "convert/FixTask.h"
#include "formats/Formats.h"
#include "platform/Resources.h"
#include "shntool/SHNToolJoinTask.h"
#include "shntool/SHNToolPadTask.h"
#include "shntool/SHNToolSplitTask.h"
#include "shntool/SHNToolStripTask.h"
#include "shntool/SHNToolTrimTask.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "tasks/ToolCatalog.h"

#include <QDir>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

constexpr std::size_t sector = 588; // frames

/// `edge` frames of silence, noise, and as much silence again.
QString makeSource(const QString &path, const AudioShape &shape, std::size_t edge)
{
    Audio audio = makeAudio(shape);
    for (std::size_t i = 0; i < audio.samples.size(); ++i) {
        audio.samples[i] |= 1; // no silence but the announced one
        if (i < edge * shape.channels || i >= audio.samples.size() - edge * shape.channels) {
            audio.samples[i] = 0;
        }
    }
    QByteArray wav = wavBytes(audio);
    wav.append("LIST\4\0\0\0junk", 12); // something to strip
    qToLittleEndian(static_cast<quint32>(wav.size() - 8), wav.data() + 4);
    writeFile(path, wav);
    return path;
}

class SetProofTest : public testing::Test
{
protected:
    SetProofTest()
    {
        engine.queue.setProvesOutputs();
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, [this](KruvTask &job) {
            succeeded = !job.error();
            proof = job.proof();
            said = job.results()->results(job);
        });
    }
    QStringList makeSources(const AudioShape &shape, std::size_t edge = 0)
    {
        QStringList sources;
        AudioShape each = shape;
        for (const std::size_t frames : {shape.frames, shape.frames + 1000, shape.frames + 300}) {
            each.frames = frames;
            ++each.seed;
            const QString name = u"%1.wav"_s.arg(sources.size() + 1);
            sources.append(makeSource(engine.folder.file(name), each, edge));
        }
        return sources;
    }
    /// Runs one mode of all; false where the job failed.
    bool run(const QString &mode, const QString &format, const QStringList &sources, bool deletes = false)
    {
        QDir(out).removeRecursively();
        QDir().mkpath(out);
        const std::shared_ptr<OutputTask> job = make(mode, format, sources);
        job->setDeleteOriginal(deletes);
        engine.queue.addTask(job);
        return engine.runToEnd() && succeeded;
    }
    QStringList made() const { return QDir(out).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    Engine engine;
    const QString out = engine.folder.makeFolder(u"out"_s);
    QByteArray points = "0:00.12\n0:00.31\n";
    bool succeeded = false;
    ProofNote proof;
    QString said;

private:
    std::shared_ptr<OutputTask> make(const QString &mode, const QString &format, const QStringList &sources)
    {
        SHNToolOutputTask::Request request{
            .launchPath = toolPath(u"shntool"_s), .folder = out, .format = format, .files = sources};
        if (mode == u"fix") {
            return std::make_shared<FixTask>(&engine.queue,
                                             FixTask::Request{.fileNames = sources,
                                                              .target = Formats::ofType(format.toUpper()),
                                                              .outputPath = out},
                                             [] {});
        }
        if (mode == u"split") {
            request.files = {sources[0]};
            return std::make_shared<SHNToolSplitTask>(&engine.queue, request,
                                                      engine.folder.write(u"points.txt"_s, points));
        }
        if (mode == u"join") {
            return std::make_shared<SHNToolJoinTask>(&engine.queue, request);
        }
        if (mode == u"pad") {
            return std::make_shared<SHNToolPadTask>(&engine.queue, request);
        }
        if (mode == u"trim") {
            return std::make_shared<SHNToolTrimTask>(&engine.queue, request);
        }
        return std::make_shared<SHNToolStripTask>(&engine.queue, request);
    }
};

/// A mode that ran right, and what a wrong tool makes of its outputs.
struct Fault
{
    const char *mode;
    const char *name;
    void (*spoil)(std::vector<Audio> &outputs);
};

void PrintTo(const Fault &fault, std::ostream *stream)
{
    *stream << fault.mode << ", " << fault.name;
}

void moveFrame(std::vector<Audio> &outputs)
{
    std::vector<std::int32_t> &first = outputs[0].samples;
    outputs[1].samples.insert(outputs[1].samples.begin(), first.end() - 2, first.end());
    first.resize(first.size() - 2);
}

void swapTracks(std::vector<Audio> &outputs)
{
    std::swap(outputs[0], outputs[1]);
}

void loseLastFrame(std::vector<Audio> &outputs)
{
    outputs.back().samples.resize(outputs.back().samples.size() - 2);
}

void spoilSome(std::vector<Audio> &outputs)
{
    std::vector<std::int32_t> &samples = outputs.back().samples;
    std::fill_n(samples.begin() + static_cast<std::ptrdiff_t>(samples.size() / 2), 32, 77);
}

void addSector(std::vector<Audio> &outputs)
{
    outputs.back().samples.resize(outputs.back().samples.size() + 2 * sector);
}

void padWithSound(std::vector<Audio> &outputs)
{
    outputs.back().samples.back() = 1;
}

const Fault faults[] = {
    {"fix", "moves a frame", moveFrame},
    {"fix", "swaps tracks", swapTracks},
    {"fix", "loses a frame", loseLastFrame},
    {"fix", "writes wrong bytes", spoilSome},
    {"fix", "pads too much", addSector},
    {"fix", "pads with sound", padWithSound},
    {"split", "moves a frame", moveFrame},
    {"split", "swaps tracks", swapTracks},
    {"split", "loses a frame", loseLastFrame},
    {"split", "writes wrong bytes", spoilSome},
    {"join", "loses a frame", loseLastFrame},
    {"join", "writes wrong bytes", spoilSome},
    {"join", "pads", addSector},
    {"pad", "pads too much", addSector},
    {"pad", "pads with sound", padWithSound},
    {"pad", "swaps tracks", swapTracks},
    {"pad", "loses a frame", loseLastFrame},
    {"trim", "cuts sound", loseLastFrame},
    {"trim", "writes wrong bytes", spoilSome},
    {"trim", "swaps tracks", swapTracks},
    {"trim", "adds silence", addSector},
    {"strip", "loses a frame", loseLastFrame},
    {"strip", "swaps tracks", swapTracks},
};

class WrongTool : public SetProofTest, public testing::WithParamInterface<Fault>
{
};

} // namespace

TEST_F(SetProofTest, EveryModeIsProvenWithEveryFormat)
{
    const struct
    {
        const char *modes;
        AudioShape shape;
    } kinds[] = {
        {"fix pad trim strip join split", {.frames = 20'000}},
        {"trim strip join split", {.channels = 1, .frames = 20'000, .seed = 10}},
        {"trim strip join split", {.bitsPerSample = 24, .frames = 20'000, .seed = 20}},
        {"trim strip join split", {.channels = 6, .frames = 20'000, .seed = 30}},
    };
    for (const auto &[modes, shape] : kinds) {
        const QStringList plain = makeSources(shape, 50);
        for (const QString &mode : QString::fromLatin1(modes).split(u' ')) {
            for (const QString &format : {u"wav"_s, u"flac"_s, u"shn"_s, u"aiff"_s}) {
                if (format == u"shn" && shape.bitsPerSample > 16) {
                    continue;
                }
                SCOPED_TRACE((mode + u' ' + format + u' ').toStdString() + std::to_string(shape.channels) +
                             "x" + std::to_string(shape.bitsPerSample));
                EXPECT_TRUE(run(mode, format, plain)) << said.toStdString();
                EXPECT_EQ(proof.kind, u"same-set");
                EXPECT_TRUE(proof.decoder.size() > 2 && proof.digest.size() >= 32);
            }
        }
    }
}

TEST_F(SetProofTest, WhatChangedIsSaidInNumbers)
{
    const QStringList sources = makeSources({.frames = 30'000}, 50);
    const struct
    {
        QString mode;
        QString words;
    } cases[] = {{u"fix"_s, u"3 tracks, 91,300 + 428 frames of silence at the end"_s},
                 {u"pad"_s, u"3 files, 91,300 + 1,016 frames of silence at the end"_s},
                 {u"trim"_s, u"3 files, 91,300 - 300 frames of silence at the ends"_s},
                 {u"join"_s, u"3 tracks, 91,300 frames"_s},
                 {u"split"_s, u"3 tracks, 30,000 frames"_s},
                 {u"strip"_s, QString()}};
    for (const auto &[mode, words] : cases) {
        EXPECT_TRUE(run(mode, u"wav"_s, sources)) << mode.toStdString() << said.toStdString();
        EXPECT_EQ(proof.words, words);
    }
    EXPECT_TRUE(run(u"fix"_s, u"wav"_s, sources, true)) << said.toStdString();
    EXPECT_FALSE(QFile::exists(sources[0]));
}

TEST_F(SetProofTest, TracksAreTakenInTheirOrderAndPointsAsTheToolTakesThem)
{
    const QStringList sources = makeSources({.frames = 125 * sector + 17});
    points.clear();
    for (int track = 1; track < 120; ++track) { // so that there are a tenth and a hundredth
        points += "0:0" + QByteArray::number(track / 75) + '.' +
                  QByteArray::number(track % 75).rightJustified(2, '0') + '\n';
    }
    EXPECT_TRUE(run(u"split"_s, u"wav"_s, sources)) << said.toStdString();
    EXPECT_TRUE(proof.words.startsWith(u"120 tracks"_s)) << proof.words.toStdString();
    points = "0:00.013\n0:01.019\n"; // milliseconds go to the nearest sector
    EXPECT_TRUE(run(u"split"_s, u"flac"_s, sources)) << said.toStdString();
    points = "40004\r\n";
    EXPECT_TRUE(run(u"split"_s, u"wav"_s, sources)) << said.toStdString();
    // Tracks shorter than a sector become empty.
    const QStringList tiny{sources[0], makeSource(engine.folder.file(u"t.wav"_s), {.frames = 100}, 0),
                           sources[1]};
    EXPECT_TRUE(run(u"fix"_s, u"wav"_s, tiny)) << said.toStdString();
}

TEST_P(WrongTool, IsDisprovedBeforeAnythingIsLost)
{
    const QString mode = QString::fromLatin1(GetParam().mode);
    const QStringList sources = makeSources({.frames = 20'000}, 50);
    ASSERT_TRUE(run(mode, u"wav"_s, sources)) << said.toStdString();
    std::vector<Audio> outputs;
    const QStringList names = made();
    for (const QString &name : names) {
        outputs.push_back(readWav(out + u'/' + name));
    }
    const QString tools = engine.folder.makeFolder(u"tools"_s);
    const QString given = engine.folder.makeFolder(u"given"_s);
    const QString tool = tools + u"/shntool"_s;
    writeFile(tool,
              "#!/bin/sh\nwhile [ \"$1\" != -d ]; do shift; done\ncp '" + given.toUtf8() + "'/* \"$2\"\n");
    QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
    const auto give = [&] {
        for (std::size_t i = 0; i < outputs.size(); ++i) {
            writeFile(given + u'/' + names[static_cast<qsizetype>(i)], wavBytes(outputs[i]));
        }
    };
    const EnvironmentVariable resources("KRUV_RESOURCES", tools.toUtf8());
    give();
    ASSERT_TRUE(run(mode, u"wav"_s, sources)) << said.toStdString();
    GetParam().spoil(outputs);
    give();
    EXPECT_FALSE(run(mode, u"wav"_s, sources, true));
    EXPECT_EQ(proof.kind, QString());
    EXPECT_FALSE(said.isEmpty());
    EXPECT_EQ(made(), QStringList());
    for (const QString &source : sources) {
        EXPECT_TRUE(QFile::exists(source));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, WrongTool, testing::ValuesIn(faults));

} // namespace kruv::test
