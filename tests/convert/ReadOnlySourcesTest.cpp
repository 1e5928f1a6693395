// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/ConversionTask.h"
#include "formats/Formats.h"
#include "formats/Records.h"
#include "support/Audio.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "support/RareAudio.h"
#include "support/Session.h"
#include "tabs/DecodeTab.h"

#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

/// A second of two channels.
QByteArray oneBitSilence()
{
    return QByteArray(705'600, '\x69');
}

struct ReadOnlySource
{
    const Format *format;
    const char *name;
    /// What ffmpeg makes it with.
    QStringList arguments;
    bool isLossless = false;
    QByteArray made = {}; // instead
};

} // namespace

TEST(ReadOnlySources, BecomeFlacAndWavByTheirContent)
{
    Engine engine;
    const AudioShape shape{.sampleRate = 48000, .channels = 2, .bitsPerSample = 24, .frames = 48000};
    const QString wav = engine.folder.file(u"source.wav"_s);
    writeWav(wav, shape);
    const QStringList experimental{u"-strict"_s, u"-2"_s};
    const std::vector<ReadOnlySource> sources{
        {&trueHdFormat, "a.thd", experimental + QStringList{u"-c:a"_s, u"truehd"_s}, true},
        {&trueHdFormat, "a.mlp", experimental + QStringList{u"-c:a"_s, u"mlp"_s}, true},
        {&mp3Format, "a.mp3", {}},
        {&adtsFormat, "a.aac", {}},
        {&aacFormat, "aac.m4a", {u"-c:a"_s, u"aac"_s}},
        {&vorbisFormat, "a.ogg", {u"-c:a"_s, u"libvorbis"_s}},
        {&dsdFormat, "a.dsf", {}, false, dsfBytes(oneBitSilence())},
        {&dsdFormat, "a.dff", {}, false, dffBytes(oneBitSilence())},
        {&alsFormat, "a.als", {}, true, alsBytes(makeAudio(shape))},
    };
    for (const ReadOnlySource &source : sources) {
        SCOPED_TRACE(source.name);
        const QString path = engine.folder.file(QString::fromLatin1(source.name));
        if (!source.made.isEmpty()) {
            writeFile(path, source.made);
        } else {
            QProcess ffmpeg;
            ffmpeg.start(u"ffmpeg"_s, QStringList{u"-v"_s, u"error"_s, u"-nostdin"_s, u"-i"_s, wav} +
                                          source.arguments + QStringList{path});
            ASSERT_TRUE(ffmpeg.waitForFinished(-1) && ffmpeg.exitCode() == 0)
                << ffmpeg.readAllStandardError().constData();
        }
        ASSERT_EQ(Formats::identify(path), source.format);
        const QString decoded = path + u".wav"_s;
        const QString flac = path + u".flac"_s;
        const QString back = path + u".flac.wav"_s;
        const auto run = [&engine](const std::shared_ptr<ConversionTask> &job) {
            engine.queue.addTask(job);
            EXPECT_TRUE(engine.runToEnd());
            EXPECT_FALSE(job->error()) << job->results()->results().toStdString();
        };
        run(source.format->decode(&engine.queue, {.source = path, .output = decoded}));
        run(flacFormat.encode(&engine.queue, {.source = path, .output = flac}));
        run(flacFormat.decode(&engine.queue, {.source = flac, .output = back}));
        const Audio audio = readWav(decoded);
        EXPECT_TRUE(audio == readWav(back));
        if (source.isLossless) {
            EXPECT_TRUE(audio == makeAudio(shape));
        } else {
            const double seconds =
                static_cast<double>(audio.samples.size()) / audio.channels / audio.sampleRate;
            EXPECT_NEAR(seconds, 1.0, 0.06); // less exact where the format states no length
        }
    }
}

TEST(ReadOnlySources, WhatIsComputedAnewTakesTheOriginalsPlaceByAgreementOnly)
{
    Session session;
    session.preferences.setValue(u"warnOnDelete"_s, false);
    const QString dsf = session.music + u"/a.dsf"_s;
    const QString wav = session.music + u"/b.wav"_s;
    for (const bool agrees : {false, true}) {
        writeFile(dsf, dsfBytes(oneBitSilence()));
        writeWav(wav);
        DecodeTab &tab = session.controller.decodeTab();
        tab.deleteOriginalsButton().setOn(true);
        tab.outputFormatMatrix().selectId(u"aiff"_s);
        tab.addFiles({dsf, wav});
        session.person.textAnswers = {session.folder.makeFolder(agrees ? u"yes"_s : u"no"_s)};
        session.person.buttonAnswers = {agrees ? 1 : 0};
        session.ended.clear();
        tab.executeCommand();
        ASSERT_TRUE(session.runToEnd());
        EXPECT_EQ(session.person.questions.back().text, dsf) << "and nothing of the other file";
        EXPECT_EQ(QFile::exists(dsf), !agrees);
        EXPECT_FALSE(QFile::exists(wav));
        ASSERT_EQ(session.ended.size(), 2U);
        for (const Ended &job : session.ended) {
            EXPECT_EQ(job.error, job.input == dsf && !agrees) << job.text.toStdString();
            EXPECT_EQ(job.text.contains(u"--delete-changed"_s), job.error);
        }
    }
}

} // namespace kruv::test
