// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QFileInfo>
#include <QMap>

namespace kruv::test {

namespace {

/// A plan of twelve files, and the files that the same command makes by itself.
class RunTest : public Program
{
protected:
    void SetUp() override
    {
        for (const char *each : {"in", "alone", "out"}) {
            QDir(music).mkpath(QString::fromUtf8(each));
        }
        for (int index = 0; index < tracks; ++index) {
            wav(u"in/%1 100% 'q'.wav"_s.arg(index), 2000 + 900 * static_cast<std::size_t>(index));
        }
    }
    Outcome plan(const QStringList &more = {})
    {
        return encode(
            QStringList{u"-o"_s, u"out"_s, u"--fingerprints"_s, u"--save-plan"_s, u"set.plan"_s, u"in"_s} +
            more);
    }
    Outcome runPlan(const QStringList &more = {}) { return run(QStringList{u"run"_s, u"set.plan"_s} + more); }
    /// The counts of --status.
    QJsonObject status() { return objects(runPlan({u"--status"_s, u"--json"_s}).out).back(); }
    /// What a folder holds, hidden files too, but for the time in lists.
    QMap<QString, QByteArray> everything(const QString &of) const
    {
        QMap<QString, QByteArray> all;
        const QDir place(music + u'/' + of);
        for (const QString &name : place.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
            QByteArray bytes = readFile(place.filePath(name));
            if (name.endsWith(u".txt")) {
                bytes.remove(0, bytes.indexOf('\n'));
            }
            all.insert(name, bytes);
        }
        return all;
    }
    qsizetype made() const { return QDir(music + u"/out"_s).entryList({u"*.flac"_s}).size(); }
    /// A FLAC encoder that waits before it begins, and says so in a file.
    void stall(const QByteArray &seconds)
    {
        const QByteArray tool = resourcesFolder().toUtf8();
        shell(u"flac"_s, "echo >> '" + folder.file(u"stalled"_s).toUtf8() + "'\nsleep " + seconds +
                             "\nexec '" + tool + "/flac' \"$@\"\n");
        QFile::link(resourcesFolder() + u"/metaflac"_s, resources + u"/metaflac"_s);
    }
    bool isStalled() const { return QFile::exists(folder.file(u"stalled"_s)); }

    static constexpr int tracks = 12;
};

} // namespace

TEST_F(RunTest, PartsAndWhatWasLostGiveTheSetOfOneRun)
{
    folder.write(u"music/in/notes.txt"_s, "hello");
    folder.write(u"music/in/set.cue"_s,
                 "FILE \"1 100% 'q'.wav\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n");
    ASSERT_EQ(
        encode({u"-o"_s, u"alone"_s, u"--mirror"_s, u"--copy-others"_s, u"--fingerprints"_s, u"in"_s}).status,
        0);
    ASSERT_EQ(plan({u"--mirror"_s, u"--copy-others"_s}).status, 0);
    EXPECT_TRUE(everything(u"out"_s).isEmpty()) << "a plan makes nothing";
    EXPECT_EQ(plan().status, 2) << "it replaces no plan unasked";

    const Outcome first = runPlan({u"--shard"_s, u"1/2"_s});
    EXPECT_EQ(first.status, 0) << first.err.constData();
    const qsizetype half = made();
    EXPECT_GT(half, 0);
    EXPECT_LT(half, tracks);

    // The other part is killed in the middle, and one result is lost with it: that file is there all the
    // same.
    stall("0.3");
    const auto second = start({u"run"_s, u"set.plan"_s, u"--shard"_s, u"2/2"_s, u"--jobs"_s, u"1"_s});
    ASSERT_TRUE(waitUntil([&] { return made() >= half + 2; }));
    second->kill();
    end(*second);
    resources = resourcesFolder();
    const QDir results(music + u"/set.plan.results"_s);
    const QString torn = results.filePath(results.entryList({u"2-of-2*"_s}).value(0));
    QByteArray lines = readFile(torn);
    writeFile(torn, lines.left(lines.lastIndexOf('\n', -2) + 20));

    EXPECT_EQ(runPlan({u"--finish"_s}).status, 1);
    const Outcome table = runPlan({u"--status"_s});
    EXPECT_EQ(table.status, 1);
    EXPECT_TRUE(table.out.contains(
        "Part 1 of 2: %1 done, 0 failed, 0 left of %1"_ba.replace("%1", QByteArray::number(half))))
        << table.out.constData();
    EXPECT_GT(status()[u"left"].toInt(), 1);
    const Outcome missing = runPlan({u"--missing"_s});
    EXPECT_EQ(missing.status, 0) << missing.err.constData();
    EXPECT_EQ(status()[u"done"].toInt(), tracks);
    EXPECT_EQ(status()[u"left"].toInt(), 2) << "the other files come last";
    EXPECT_TRUE(status()[u"restLeft"].toBool());
    EXPECT_EQ(runPlan({u"--finish"_s}).status, 0);
    EXPECT_TRUE(everything(u"out"_s) == everything(u"alone"_s));
    EXPECT_TRUE(readFile(music + u"/out/set.cue"_s).contains(".flac"));

    const auto files = results.entryList(QDir::Files);
    EXPECT_EQ(runPlan({u"--missing"_s, u"--finish"_s}).status, 0);
    EXPECT_EQ(results.entryList(QDir::Files), files) << "nothing is done twice";
    EXPECT_EQ(runPlan({u"--status"_s}).status, 0);
}

TEST_F(RunTest, TwoOfTheSamePartDoNoHarm)
{
    ASSERT_EQ(encode({u"-o"_s, u"alone"_s, u"--fingerprints"_s, u"in"_s}).status, 0);
    ASSERT_EQ(plan().status, 0);
    stall("0.1");
    std::vector<std::unique_ptr<QProcess>> runs;
    runs.reserve(3);
    for (int each = 0; each < 3; ++each) {
        runs.push_back(start({u"run"_s, u"set.plan"_s, u"--shard"_s, u"1/1"_s, u"--jobs"_s, u"2"_s}));
    }
    for (const auto &each : runs) {
        const Outcome outcome = end(*each);
        EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    }
    EXPECT_EQ(runPlan({u"--finish"_s}).status, 0);
    EXPECT_TRUE(everything(u"out"_s) == everything(u"alone"_s));
}

TEST_F(RunTest, TwoThatDeleteOriginalsDeleteEachOnce)
{
    ASSERT_EQ(plan({u"--delete-originals"_s}).status, 2) << "it asks before";
    ASSERT_EQ(plan({u"--delete-originals"_s, u"-y"_s}).status, 0);
    stall("0.1");
    const QStringList command{u"run"_s, u"set.plan"_s, u"--missing"_s};
    const auto one = start(command);
    const auto other = start(command);
    const Outcome first = end(*one);
    EXPECT_EQ(first.status, 0) << first.err.constData();
    const Outcome second = end(*other);
    EXPECT_EQ(second.status, 0) << second.err.constData();
    EXPECT_EQ(made(), tracks);
    EXPECT_TRUE(everything(u"in"_s).isEmpty());
    EXPECT_EQ(status()[u"done"].toInt(), tracks);
}

TEST_F(RunTest, WhatIsThereIsLookedAtAndNeverReplaced)
{
    ASSERT_EQ(plan().status, 0);
    const QStringList names = QDir(music + u"/in"_s).entryList(QDir::Files);
    const QString other = music + u"/out/"_s + QFileInfo(names[0]).completeBaseName() + u".flac"_s;
    writeWav(music + u"/alone/x.wav"_s, {.frames = 700});
    ASSERT_EQ(encode({u"-o"_s, u"alone"_s, u"alone/x.wav"_s}).status, 0);
    ASSERT_TRUE(QFile::rename(music + u"/alone/x.flac"_s, other));
    const QByteArray theirs = readFile(other);
    QFile::remove(music + u"/in/"_s + names[1]);

    const Outcome outcome = runPlan();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains("may not be what was made of")) << outcome.err.constData();
    EXPECT_EQ(readFile(other), theirs);
    EXPECT_EQ(made(), tracks - 1);
    EXPECT_EQ(status()[u"failed"].toInt(), 2);
    EXPECT_FALSE(status()[u"done"].toInt() < tracks - 2);
    EXPECT_TRUE(everything(u"out"_s).size() == tracks - 1) << "no list while something is missing";
    // What failed is tried again once its cause is gone; what somebody changed since is no result any more.
    QFile::remove(other);
    writeWav(music + u"/in/"_s + names[1], {.frames = 900});
    QFile::remove(music + u"/out/"_s + QFileInfo(names[2]).completeBaseName() + u".flac"_s);
    EXPECT_EQ(runPlan().status, 0);
    EXPECT_EQ(made(), tracks);
    EXPECT_EQ(everything(u"out"_s).size(), tracks + 1);
}

TEST_F(RunTest, PathsMoveWithTheirRoots)
{
    ASSERT_EQ(plan().status, 0);
    const QString there = folder.file(u"mounted"_s);
    ASSERT_TRUE(QDir().rename(music + u"/in"_s, there + u"-in"_s));
    ASSERT_TRUE(QDir().mkpath(there));
    const QStringList roots{u"--root"_s, music + u"/in="_s + there + u"-in"_s, u"--root"_s,
                            music + u"/out="_s + there};
    const Outcome outcome = runPlan(roots + QStringList{u"--results"_s, u"elsewhere/deep"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_EQ(QDir(there).entryList(QDir::Files).size(), tracks + 1);
    EXPECT_EQ(made(), 0);
    EXPECT_EQ(runPlan(roots + QStringList{u"--results"_s, u"elsewhere/deep"_s, u"--status"_s}).status, 0);
}

TEST_F(RunTest, ReplacesOnlyWhatWasThereWhenThatWasAgreed)
{
    for (const char *each : {"two/1", "two/2", "out/1", "out/2", "one"}) {
        QDir(music).mkpath(QString::fromUtf8(each));
    }
    for (const QString &each : {u"1"_s, u"2"_s}) {
        writeWav(music + u"/two/"_s + each + u"/a.wav"_s, {.frames = 900, .seed = each.toUInt()});
        folder.write(u"music/out/"_s + each + u"/a.flac"_s, "old");
    }
    const QStringList toReplace{
        u"-o"_s, u"out"_s,         u"--mirror"_s, u"--overwrite"_s, u"--delete-originals"_s,
        u"-y"_s, u"--save-plan"_s, u"set.plan"_s, u"two"_s};
    ASSERT_EQ(encode(toReplace).status, 0);
    // Both would become one file, one after the other: only one original may go.
    folder.write(u"music/one/a.flac"_s, "old");
    const Outcome both = runPlan({u"--root"_s, music + u"/out/1="_s + music + u"/one"_s, u"--root"_s,
                                  music + u"/out/2="_s + music + u"/one"_s});
    EXPECT_EQ(both.status, 1) << both.err.constData();
    EXPECT_EQ(QDir(music + u"/two/1"_s).count() + QDir(music + u"/two/2"_s).count(), 5U)
        << "one original went";
    // A file that somebody changed since stays.
    writeWav(music + u"/two/1/a.wav"_s, {.frames = 900, .seed = 7});
    ASSERT_EQ(encode(toReplace).status, 0);
    folder.write(u"music/out/1/a.flac"_s, "edited since");
    EXPECT_EQ(runPlan().status, 1);
    EXPECT_EQ(readFile(music + u"/out/1/a.flac"_s), "edited since");
    // Nor is anything but a plan taken for one that may be replaced.
    EXPECT_EQ(
        encode({u"-o"_s, u"out"_s, u"--overwrite"_s, u"--save-plan"_s, u"two/1/a.wav"_s, u"two"_s}).status,
        2);
}

TEST_F(RunTest, SaysWhatIsWrong)
{
    ASSERT_EQ(plan().status, 0);
    const QByteArray whole = readFile(music + u"/set.plan"_s);
    const QByteArrayList lines = whole.split('\n');
    ASSERT_EQ(lines.size(), tracks + 2);
    struct Case
    {
        QByteArray content;
        QStringList flags;
        const char *words;
    };
    const Case cases[] = {
        {"RIFF....WAVE", {}, "no plan"},
        {"{\"a\":1}\n", {}, "no plan"},
        {"", {}, "no plan"},
        {QByteArray(whole).replace("\"kruv-plan\":1", "\"kruv-plan\":2"), {}, "newer version"},
        {QByteArray(whole).replace("\"to\":\"flac\"", "\"to\":\"else\""), {}, "can't do"},
        {whole.chopped(20), {}, "line 13: it was cut off"},
        {whole.left(whole.lastIndexOf('\n', -2) + 1), {}, "line 13: the file ends there"},
        {QByteArray(whole).replace(lines[4], "x"), {}, "line 5: it is no entry"},
        {whole + lines[4] + '\n', {}, "line 14: there are more"},
        {whole, {u"--shard"_s, u"0/8"_s}, "--shard 0/8"},
        {whole, {u"--shard"_s, u"9/8"_s}, "--shard 9/8"},
        {whole, {u"--root"_s, u"/data"_s}, "OLD=NEW"},
        {whole, {u"--results"_s, u"in/0 100% 'q'.wav/x"_s}, "Results can't be written"},
    };
    for (const Case &each : cases) {
        SCOPED_TRACE(each.words);
        writeFile(music + u"/set.plan"_s, each.content);
        const Outcome outcome = runPlan(each.flags);
        EXPECT_NE(outcome.status, 0);
        EXPECT_TRUE(outcome.err.contains(each.words)) << outcome.err.constData();
        EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.constData();
    }
    EXPECT_EQ(made(), 0);
}

TEST_F(RunTest, APlanTellsWhatItRefuses)
{
    writeAiff(music + u"/in/c.aiff"_s, {.frames = 500});
    wav(u"in/c.wav"_s); // both would be c.flac
    folder.write(u"music/in/text.wav"_s, "no audio");
    const Outcome planned = plan();
    EXPECT_EQ(planned.status, 1);
    EXPECT_EQ(planned.out.count("refuse "), 3) << planned.out.constData();
    EXPECT_EQ(readFile(music + u"/set.plan"_s).count('\n'), tracks + 1);
    EXPECT_EQ(runPlan().status, 0);
    EXPECT_EQ(made(), tracks);
    // Of what is agreed to be replaced, nobody can tell which run made it.
    EXPECT_EQ(plan({u"--overwrite"_s}).status, 1);
    EXPECT_EQ(runPlan().status, 0);
    EXPECT_EQ(status()[u"done"].toInt(), tracks);
}

} // namespace kruv::test
