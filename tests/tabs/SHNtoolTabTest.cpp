// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The whole tab with the real tool, as a person uses it.

#include "tabs/SHNtoolTab.h"

#include "base/PathNames.h"
#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/FullDisk.h"
#include "support/QtPrinters.h"
#include "support/Session.h"

#include <QDir>
#include <QDirIterator>
#include <QtEndian>

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

constexpr std::size_t sector = 588; // frames

class SHNtoolTabTest : public testing::Test
{
protected:
    SHNtoolTab &tab() { return session.controller.shntoolTab(); }
    QString path(const QString &name) const { return session.music + u'/' + name; }

    QString makeWav(const QString &name, std::size_t frames, unsigned channels = 2)
    {
        AudioShape shape;
        shape.frames = frames;
        shape.channels = channels;
        shape.seed = ++m_seed;
        writeWav(path(name), shape);
        return path(name);
    }

    /// Runs a command beside the sources; true when its jobs succeeded.
    bool run(const QString &command, const QStringList &files) { return run(command, files, tab()); }
    bool run(const QString &command, const QStringList &files, SHNtoolTab &where)
    {
        where.shntoolCommandMatrix().selectId(command);
        where.outputFormatMatrix().selectId(u"wav"_s);
        where.sourceEncodeButton().setOn(true);
        where.addFiles(files);
        session.ended.clear();
        where.executeCommand();
        EXPECT_TRUE(where.fileList().isEmpty());
        if (cancelsOnceItWrites) {
            EXPECT_TRUE(waitUntil([this] { return writes(); }));
            session.controller.taskQueue().cancelAllTasks();
        }
        EXPECT_TRUE(session.runToEnd());
        const auto failed = [](const Ended &job) { return job.error; };
        return !session.ended.empty() && std::ranges::none_of(session.ended, failed);
    }
    bool runAndDelete(const QString &command, const QStringList &files)
    {
        return runAndDelete(command, files, tab());
    }
    bool runAndDelete(const QString &command, const QStringList &files, SHNtoolTab &where)
    {
        where.deleteOriginalsButton().setOn(command != u"split");
        session.person.buttonAnswers = {0, 1}; // originals go, whatever outputs can't hold
        return run(command, files, where);
    }
    QString said() const { return session.ended.empty() ? QString() : session.ended.front().text; }
    QStringList listing() const { return QDir(session.music).entryList(QDir::Files, QDir::Name); }
    QStringList everything() const
    {
        return QDir(session.music)
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }
    /// Whether the job has begun to write audio.
    bool writes() const
    {
        constexpr qint64 begun = 100'000; // bytes
        QDirIterator files(session.music, {u"*.wav"_s}, QDir::Files | QDir::Hidden,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            if (files.next().contains(u"/.kruv-"_s) && files.fileInfo().size() > begun) {
                return true;
            }
        }
        return false;
    }

    Session session;
    bool cancelsOnceItWrites = false;

private:
    std::uint32_t m_seed = 0;
};

TEST_F(SHNtoolTabTest, EachCommandShowsItsOptions)
{
    const struct
    {
        QString command;
        bool lengths;
        bool output;
        bool deletes;
    } cases[] = {{u"len"_s, true, false, false},   {u"cmp"_s, false, false, false},
                 {u"split"_s, false, true, false}, {u"join"_s, false, true, true},
                 {u"pad"_s, false, true, true},    {u"cue"_s, false, false, false}};
    for (const auto &each : cases) {
        tab().shntoolCommandMatrix().selectId(each.command);
        EXPECT_EQ(!tab().shnLenMatrix().isHidden(), each.lengths) << each.command.toStdString();
        EXPECT_EQ(!tab().outputFormatMatrix().isHidden(), each.output) << each.command.toStdString();
        EXPECT_EQ(!tab().sourceEncodeButton().isHidden(), each.output) << each.command.toStdString();
        EXPECT_EQ(!tab().deleteOriginalsButton().isHidden(), each.deletes) << each.command.toStdString();
        EXPECT_TRUE(tab().namesButton().isHidden());
    }
    tab().shntoolCommandMatrix().selectId(u"len"_s);
    tab().shnLenMatrix().select(1);
    EXPECT_FALSE(tab().namesButton().isHidden());
}

TEST_F(SHNtoolTabTest, SplitTracksJoinToTheSameSamples)
{
    const QString whole = makeWav(u"concert.wav"_s, 1500 * sector + 17);
    const QByteArray sheet =
        "FILE \"concert.wav\" WAVE\nTRACK 01 AUDIO\nTITLE \"../Same\"\nINDEX 01 00:00:00\n"
        "TRACK 02 AUDIO\nTITLE \"Same\"\nINDEX 01 00:05:07\nTRACK 03 AUDIO\nTITLE \"Taken\"\n"
        "INDEX 01 00:12:00\n";
    const QString points = session.folder.write(u"points.cue"_s, sheet);
    writeFile(path(u"03 Taken.wav"_s), "mine");
    session.person.textAnswers = {points};
    session.person.buttonAnswers = {0}; // the third is to stay
    EXPECT_FALSE(run(u"split"_s, {whole}));
    EXPECT_EQ(session.person.questions.back().text, path(u"03 Taken.wav"_s));
    EXPECT_EQ(listing(), (QStringList{u"03 Taken.wav"_s, u"concert.wav"_s}));
    session.person.textAnswers = {points};
    session.person.buttonAnswers = {1};
    EXPECT_TRUE(run(u"split"_s, {whole}));
    const QStringList tracks{path(u"01 ..-Same.wav"_s), path(u"02 Same.wav"_s), path(u"03 Taken.wav"_s)};
    EXPECT_EQ(readWav(tracks[0]).frames(), (5 * 75 + 7) * sector);

    session.person.textAnswers = {path(u"back.wav"_s)};
    EXPECT_TRUE(run(u"join"_s, tracks));
    EXPECT_EQ(readWav(path(u"back.wav"_s)), readWav(whole));
    EXPECT_TRUE(run(u"cmp"_s, {whole, path(u"back.wav"_s)}));
    EXPECT_FALSE(run(u"cmp"_s, {whole, tracks[1]}));
    EXPECT_TRUE(said().contains(u"differs at byte offset"_s));

    // How many tracks there are without titles shows late: what is in their way stays all the same.
    writeFile(path(u"split-track02.wav"_s), "mine");
    session.person.textAnswers = {session.folder.write(u"points.txt"_s, "0:03\n")};
    const QStringList before = listing();
    EXPECT_FALSE(run(u"split"_s, {tracks[2]}));
    EXPECT_TRUE(said().contains(u"already exists and was left"_s)) << said().toStdString();
    EXPECT_EQ(listing(), before);
    EXPECT_EQ(readFile(path(u"split-track02.wav"_s)), "mine");
}

TEST_F(SHNtoolTabTest, JoinedSourcesGoOnlyOnceTheFileIsThere)
{
    const QStringList sources{makeWav(u"a.wav"_s, 100), makeWav(u"b.wav"_s, 200)};
    writeFile(path(u"joined.wav"_s), "mine"); // the tool's own name for what it makes
    session.person.textAnswers = {path(u"nowhere/new.wav"_s)};
    EXPECT_FALSE(runAndDelete(u"join"_s, sources));
    EXPECT_EQ(listing(), (QStringList{u"a.wav"_s, u"b.wav"_s, u"joined.wav"_s}));

    session.person.textAnswers = {path(u"new.wav"_s)};
    EXPECT_FALSE(runAndDelete(u"join"_s, {sources[0], makeWav(u"mono.wav"_s, 100, 1)}));
    EXPECT_TRUE(said().contains(u"channels differs"_s)) << said().toStdString();
    QFile::remove(path(u"mono.wav"_s));

    // The chosen name may be a source's own.
    session.person.textAnswers = {sources[0]};
    EXPECT_TRUE(runAndDelete(u"join"_s, sources));
    EXPECT_EQ(listing(), (QStringList{u"a.wav"_s, u"joined.wav"_s}));
    EXPECT_EQ(readWav(sources[0]).frames(), 300U);
    EXPECT_EQ(readFile(path(u"joined.wav"_s)), "mine");
}

/// Commands over a set of files.
const struct
{
    QString command;
    QStringList texts; // answers
} makers[] = {{u"strip"_s, {}},
              {u"pad"_s, {}},
              {u"trim"_s, {}},
              {u"join"_s, {u"whole.wav"_s}},
              {u"split"_s, {u"points.txt"_s}}};

TEST_F(SHNtoolTabTest, WhatComesToNothingLeavesTheFolderAsItWas)
{
    constexpr std::size_t frames = 6'000'000; // long enough to be far from done when it is cancelled
    Audio audio = makeAudio({.frames = frames, .signal = Signal::Noise});
    std::fill_n(audio.samples.begin(), 2000, 0); // something to trim
    QByteArray wav = wavBytes(audio);
    wav.append("LIST\4\0\0\0junk", 12); // something to strip
    qToLittleEndian(static_cast<quint32>(wav.size() - 8), wav.data() + 4);
    writeFile(path(u"long.wav"_s), wav);
    makeWav(u"short.wav"_s, 100);
    writeFile(path(u"points.txt"_s), "0:30\n");
    const QStringList sources{path(u"long.wav"_s), path(u"short.wav"_s)};
    const QStringList before = everything();
    for (const auto &[command, texts] : makers) {
        for (const bool cancels : {false, true}) {
            SCOPED_TRACE(command.toStdString() + (cancels ? ", cancelled" : ", disk full"));
            session.person.textAnswers.clear();
            for (const QString &text : texts) {
                session.person.textAnswers.push_back(path(text));
            }
            cancelsOnceItWrites = cancels;
            std::optional<FullDisk> full;
            if (!cancels) {
                full.emplace(1'000'000);
            }
            runAndDelete(command, sources);
            full.reset();
            EXPECT_TRUE(cancels ? session.ended.at(0).cancelled : session.ended.at(0).error);
            EXPECT_EQ(everything(), before);
        }
    }
}

TEST_F(SHNtoolTabTest, AToolThatMakesNothingHasFailedWhateverItSays)
{
    const QString tools = session.folder.makeFolder(u"tools"_s);
    const QString shntool = session.folder.write(u"tools/shntool"_s, "#!/bin/sh\necho 'all went well'\n");
    QFile::setPermissions(shntool, QFile::ReadOwner | QFile::ExeOwner);
    const EnvironmentVariable resources("KRUV_RESOURCES", tools.toUtf8());
    SHNtoolTab here(session.controller);
    const QString source = makeWav(u"a.wav"_s, 100);
    writeFile(path(u"points.txt"_s), "0:30\n");
    const QStringList before = everything();
    for (const auto &[command, texts] : makers) {
        session.person.textAnswers.clear();
        for (const QString &text : texts) {
            session.person.textAnswers.push_back(path(text));
        }
        EXPECT_FALSE(runAndDelete(command, {source}, here));
        EXPECT_TRUE(said().contains(u"was not made"_s)) << said().toStdString();
        EXPECT_EQ(everything(), before);
    }
}

TEST_F(SHNtoolTabTest, PaddedSourcesGoAllOrNone)
{
    const QStringList sources{makeWav(u"-1 50%.wav"_s, 100), makeWav(u"b\n.wav"_s, 1000)};
    const QString whole = makeWav(u"whole.wav"_s, sector);
    EXPECT_FALSE(runAndDelete(u"pad"_s, {sources[0], whole}));
    EXPECT_TRUE(said().contains(u"already sector-aligned"_s)) << said().toStdString();
    EXPECT_TRUE(QFile::exists(sources[0]) && QFile::exists(whole));
    EXPECT_TRUE(QFile::remove(path(u"-1 50%-padded.wav"_s))) << "files that need nothing don't stop others";
    EXPECT_TRUE(runAndDelete(u"pad"_s, sources));
    EXPECT_EQ(listing(), (QStringList{u"-1 50%-padded.wav"_s, u"b\n-padded.wav"_s, u"whole.wav"_s}));
    EXPECT_EQ(readWav(path(u"b\n-padded.wav"_s)).frames(), 2 * sector);

    const QString mono = makeWav(u"mono.wav"_s, 100, 1);
    EXPECT_FALSE(runAndDelete(u"pad"_s, {mono}));
    EXPECT_TRUE(said().contains(u"not CD-quality"_s));
    EXPECT_TRUE(QFile::exists(mono));
    session.person.textAnswers = {path(u"x.cue"_s)};
    EXPECT_FALSE(run(u"cue"_s, {whole, mono}));
    EXPECT_FALSE(QFile::exists(path(u"x.cue"_s)));
    session.person.textAnswers = {path(u"x.cue"_s)};
    EXPECT_TRUE(run(u"cue"_s, {whole, path(u"b\n-padded.wav"_s)}));
    EXPECT_TRUE(readFile(path(u"x.cue"_s)).contains("TRACK 02 AUDIO\n    INDEX 01 0:00:02"));
}

TEST_F(SHNtoolTabTest, LengthsGoByDiscWithTheEnteredNames)
{
    QStringList files;
    for (const char *name : {"gig2d10t01.wav", "gig2d2t01.wav", "gig2d2t02.wav"}) {
        files.append(
            makeWav(QString::fromLatin1(name), 75 * sector * static_cast<std::size_t>(files.size() + 1)));
    }
    writeFile(path(u"list.txt"_s), "1. First 0:02\n2. Second [0:03]\n");
    session.person.textAnswers = {path(u"list.txt"_s)};
    EXPECT_TRUE(tab().trackNameWindow().loadTrackNamesFromFile());
    tab().trackNameWindow().inputOK();
    EXPECT_EQ(tab().names(), (QStringList{u"First "_s, u"Second "_s}));
    tab().shnLenMatrix().select(2);
    EXPECT_TRUE(run(u"len"_s, files));
    ASSERT_EQ(session.person.resultsWindows.size(), 1U);
    EXPECT_EQ(session.person.resultsWindows[0].text,
              u"Disc 2\n\n01. First           00:02.00\n02. Second          00:03.00\n\nDisc 2 Total: "
              u"00:05.00\n \n\n\n"
              u"Disc 10\n\n01. gig2d2t02.wav   00:01.00\n\nDisc 10 Total: 00:01.00\n \n\n\n"_s);

    // Names that are missing begin one file early.
    EXPECT_EQ(SHNtoolTab::trackNames({u"1"_s, u"2"_s, u"3"_s}, {u"/a"_s, u"/b"_s, u"/c"_s, u"/d"_s, u"/e"_s}),
              (QStringList{u"1"_s, u"2"_s, u"3"_s, u"c"_s, u"d"_s, u"e"_s}));
}

TEST_F(SHNtoolTabTest, WhatHoldsNoTrackNamesLeavesTheTextAlone)
{
    TrackNameInputController &names = tab().trackNameWindow();
    names.setInputTextString(u"typed\r\n\r\nlines"_s);
    EXPECT_FALSE(names.loadTrackNamesFromFile(path(u"nowhere"_s)));
    EXPECT_FALSE(names.loadTrackNamesFromFile(session.folder.write(u"prose.txt"_s, "No list\n")));
    EXPECT_EQ(session.person.alerts.size(), 2U);
    names.inputCancel();
    EXPECT_EQ(tab().names(), QStringList());
    names.inputOK();
    EXPECT_EQ(tab().names(), (QStringList{u"typed"_s, u"lines"_s}));
}

} // namespace kruv::test
