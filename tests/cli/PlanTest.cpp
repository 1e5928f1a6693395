// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"

#include <QDateTime>
#include <QDirIterator>
#include <QJsonArray>
#include <QMap>
#include <QSet>
#include <QThread>

namespace kruv::test {

namespace {

/// A collection as people have it, and what a command says of it beforehand.
class PlanTest : public Program
{
protected:
    void SetUp() override
    {
        journal = folder.file(u"state/journal.db"_s);
        for (const char *each : {"one", "two/deep", "other place", "out"}) {
            QDir(music).mkpath(QString::fromUtf8(each));
        }
        wav(u"one/a.wav"_s, 3000);
        wav(u"one/b 100% \"q\".wav"_s);
        wav(u"two/deep/a.wav"_s);
        writeAiff(music + u"/one/c.aiff"_s, {.frames = 500});
        wav(u"one/c.wav"_s, 3000); // both would be c.flac
        writeWav(music + u"/one/wide.wav"_s, {.channels = 6, .bitsPerSample = 24, .frames = 500});
        folder.write(u"music/one/text.wav"_s, "no audio");
        folder.write(u"music/one/notes.txt"_s, "hello");
        folder.write(u"music/one/empty.wav"_s, "");
        QFile::link(music + u"/one/a.wav"_s, music + u"/one/link.wav"_s);
        QFile::link(music + u"/one"_s, music + u"/two/again"_s);
        QFile::link(music + u"/nowhere.wav"_s, music + u"/one/dangling.wav"_s);
        folder.write(u"music/one/a.flac"_s, "there already");
        folder.write(u"music/out/a.flac"_s, "there already");
        folder.write(u"music/out/deep"_s, "a file where a folder is to be");
    }
    /// Every file and folder, with its content.
    QMap<QString, QByteArray> everything() const
    {
        QMap<QString, QByteArray> all;
        QDirIterator walk(folder.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            all.insert(path, walk.fileInfo().isFile() ? readFile(path) : QByteArray("folder"));
        }
        return all;
    }
    static QString actionOf(const QJsonObject &entry) { return entry[u"action"].toString(); }

    /// Compares what was announced with what then happens, entry by entry.
    void expectToHold(const QStringList &command)
    {
        const auto before = everything();
        const Outcome dry = run(command + QStringList{u"--dry-run"_s, u"--json"_s});
        EXPECT_EQ(everything(), before) << "a dry run makes nothing";
        EXPECT_LE(dry.status, 1) << dry.err.constData();
        std::vector<QJsonObject> entries = objects(dry.out);
        ASSERT_FALSE(entries.empty());
        const QJsonObject totals = entries.back();
        entries.pop_back();
        EXPECT_EQ(dry.status, totals[u"refused"].toInt() > 0 ? 1 : 0);

        const Outcome real = run(command);
        EXPECT_EQ(real.status, dry.status) << real.err.constData();
        const auto after = everything();
        QSet<QString> announced;
        for (const QJsonObject &entry : entries) {
            const QString output = entry[u"output"].toString();
            const QString source = entry[u"inputs"].toArray().at(0).toString();
            SCOPED_TRACE(qPrintable(actionOf(entry) + u' ' + source + u" -> "_s + output));
            if (actionOf(entry) == u"make" || actionOf(entry) == u"replace" || actionOf(entry) == u"rename") {
                announced.insert(output);
                EXPECT_EQ(before.contains(output), actionOf(entry) == u"replace");
                EXPECT_TRUE(after.contains(output) && after[output] != before.value(output));
                EXPECT_EQ(QFile::exists(source) || source.isEmpty(),
                          !entry[u"deletesOriginal"].toBool() && actionOf(entry) != u"rename");
            } else if (actionOf(entry) == u"work") {
                EXPECT_NE(after[source], before[source]);
            } else {
                EXPECT_FALSE(entry[u"reason"].toString().isEmpty());
                EXPECT_EQ(after.value(output), before.value(output));
            }
        }
        for (auto each = after.cbegin(); each != after.cend(); ++each) {
            const bool isFolder = each.value() == "folder";
            EXPECT_TRUE(before.contains(each.key()) || announced.contains(each.key()) || isFolder ||
                        each.key().startsWith(folder.file(u"state"_s)))
                << qPrintable(each.key()) << " was not announced";
        }
    }
};

} // namespace

TEST_F(PlanTest, WhatIsAnnouncedIsWhatHappens)
{
    const std::vector<QStringList> commands{
        {u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, u"out"_s, u"--skip-existing"_s, u"one"_s, u"two"_s},
        {u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, u"out"_s, u"--mirror"_s, u"--overwrite"_s, u"one"_s,
         u"two"_s},
        {u"encode"_s, u"--to"_s, u"wv"_s, u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, u"one"_s},
        {u"encode"_s, u"--to"_s, u"shn"_s, u"--beside-source"_s, u"--keep-both"_s, u"one"_s, u"--md5"_s},
        {u"lossy"_s, u"--to"_s, u"mp3"_s, u"-o"_s, u"other place"_s, u"one"_s},
        {u"decode"_s, u"--to"_s, u"aiff"_s, u"--beside-source"_s, u"--overwrite"_s, u"one"_s},
        {u"shntool"_s, u"pad"_s, u"--to"_s, u"wav"_s, u"--beside-source"_s, u"one/a.wav"_s, u"one/c.wav"_s},
        {u"shntool"_s, u"join"_s, u"--to"_s, u"flac"_s, u"--save"_s, u"joined.flac"_s, u"one/a.wav"_s,
         u"one/c.wav"_s},
        {u"fix"_s, u"--to"_s, u"flac"_s, u"--fingerprints"_s, u"-o"_s, u"out"_s, u"--overwrite"_s,
         u"one/a.wav"_s, u"one/c.wav"_s},
        {u"util"_s, u"resample"_s, u"--rate"_s, u"48"_s, u"-o"_s, u"other place"_s, u"one/a.wav"_s,
         u"one/c.wav"_s},
        {u"util"_s, u"rename"_s, u"--prefix"_s, u"Disc"_s, u"one/a.wav"_s, u"one/c.wav"_s},
        {u"checksum"_s, u"create"_s, u"--kind"_s, u"md5"_s, u"--save"_s, u"list.md5"_s, u"one/a.wav"_s},
    };
    for (const QStringList &command : commands) {
        SCOPED_TRACE(qPrintable(command.join(u' ')));
        QDir(folder.path()).removeRecursively();
        QDir().mkpath(music);
        SetUp();
        expectToHold(command);
    }
}

TEST_F(PlanTest, SaysWhichToolIsMissing)
{
    resources = folder.makeFolder(u"no tools"_s);
    const Outcome dry =
        run({u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, u"other place"_s, u"--dry-run"_s, u"two/deep"_s});
    EXPECT_EQ(dry.status, 1);
    EXPECT_TRUE(dry.out.contains("The package \"flac\" brings it")) << dry.out.constData();
    EXPECT_FALSE(QFile::exists(journal));
}

TEST_F(PlanTest, WhatNeedsAnAnswerIsRefusedWithTheFlagThatGivesIt)
{
    const Outcome taken = encode({u"--beside-source"_s, u"--dry-run"_s, u"one/a.wav"_s});
    EXPECT_EQ(taken.status, 1);
    EXPECT_TRUE(taken.out.startsWith("refuse")) << taken.out.constData();
    ASSERT_EQ(run({u"lossy"_s, u"--to"_s, u"mp3"_s, u"-o"_s, u"out"_s, u"two/deep/a.wav"_s}).status, 0);
    const Outcome lossy = encode({u"-o"_s, u"other place"_s, u"--dry-run"_s, u"out/a.mp3"_s});
    EXPECT_EQ(lossy.status, 1);
    EXPECT_TRUE(lossy.out.contains("--from-lossy")) << lossy.out.constData() << lossy.err.constData();
}

TEST_F(PlanTest, TellsOfEachFileWhichTagsItGets)
{
    ASSERT_EQ(encode({u"-o"_s, u"other place"_s, u"--mirror"_s, u"two"_s}).status, 1);
    folder.write(u"music/names.txt"_s, "1. First\n2. Second\n");
    const QStringList flac{music + u"/other place/deep/a.flac"_s,
                           music + u"/other place/again/b 100% \"q\".flac"_s};
    const QByteArray before = readFile(flac[0]);
    const Outcome dry = run({u"tags"_s, u"names"_s, u"names.txt"_s, u"--dry-run"_s, flac[0], flac[1]});
    EXPECT_EQ(dry.status, 0) << dry.err.constData();
    EXPECT_TRUE(dry.out.contains("title: First") && dry.out.contains("title: Second") &&
                dry.out.contains("track: 2"))
        << dry.out.constData();
    EXPECT_EQ(readFile(flac[0]), before);
}

TEST_F(PlanTest, KeepsTreesApart)
{
    for (const char *each : {"set/disc 1", "set/disc 2", "more/disc 1"}) {
        QDir(music).mkpath(QString::fromUtf8(each));
        wav(QString::fromUtf8(each) + u"/t01.wav"_s, 400);
    }
    const QStringList command{u"-o"_s, u"other place"_s, u"--mirror"_s};
    EXPECT_EQ(encode(command + QStringList{u"set"_s}).status, 0);
    EXPECT_EQ(readFile(music + u"/other place/disc 1/t01.flac"_s).size(),
              readFile(music + u"/other place/disc 2/t01.flac"_s).size());
    wav(u"more/disc 1/t02.wav"_s, 400);
    wav(u"set/disc 1/t03.wav"_s, 400);
    const Outcome both = encode(command + QStringList{u"--skip-existing"_s, u"set"_s, u"more"_s});
    EXPECT_TRUE(both.err.contains("gets files of")) << both.err.constData();
    EXPECT_EQ(both.status, 1) << "two of one name are refused, the rest is made";
    EXPECT_TRUE(QFile::exists(music + u"/other place/disc 1/t02.flac"_s));
    // What fails leaves no empty folders behind.
    QDir(music).mkpath(u"bad/deep/er"_s);
    folder.write(u"music/bad/deep/er/x.wav"_s, "no audio");
    EXPECT_EQ(encode(command + QStringList{u"bad"_s}).status, 1);
    EXPECT_FALSE(QFile::exists(music + u"/other place/deep"_s));
}

/// What a command makes of FLAC files that a person goes on working with.
class UpdateTest : public PlanTest
{
protected:
    void SetUp() override
    {
        journal = folder.file(u"state/journal.db"_s);
        for (const char *name : {"a", "b", "c"}) {
            wav(QString::fromUtf8(name) + u".wav"_s);
        }
        ASSERT_EQ(encode({u"--beside-source"_s, u"."_s}).status, 0);
        QDir().mkpath(music + u"/out"_s);
        ASSERT_EQ(run(toWavPack).status, 0);
    }
    QByteArray output(const QString &name) const { return readFile(music + u"/out/"_s + name); }
    void setTitle(const QString &title, const QString &file)
    {
        ASSERT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, title, file}).status, 0);
    }
    /// Another recording under the same name.
    void replaceSource(const QString &name)
    {
        writeWav(music + u'/' + name + u".wav"_s, {.frames = 700, .seed = 9});
        ASSERT_EQ(encode({u"--beside-source"_s, u"--overwrite"_s, name + u".wav"_s}).status, 0);
    }

    const QStringList toWavPack{u"encode"_s, u"--to"_s,   u"wv"_s,     u"-o"_s,
                                u"out"_s,    u"a.flac"_s, u"b.flac"_s, u"c.flac"_s};
};

TEST_F(UpdateTest, DoesAgainWhatChangedAndNothingElse)
{
    const QStringList update = toWavPack + QStringList{u"--update"_s};
    const QByteArray ofA = output(u"a.wv"_s);
    const QByteArray ofC = output(u"c.wv"_s);
    EXPECT_TRUE(run(update).err.contains("nothing to do"));
    QThread::msleep(20); // the clock of the file system
    setTitle(u"New"_s, u"b.flac"_s);
    replaceSource(u"c"_s);
    const Outcome dry = run(update + QStringList{u"--dry-run"_s});
    EXPECT_EQ(dry.out.count("\nskip") + dry.out.startsWith("skip"), 1) << dry.out.constData();
    EXPECT_EQ(dry.out.count("update "), 2) << dry.out.constData();
    const Outcome done = run(update);
    EXPECT_EQ(done.status, 0) << done.err.constData();
    EXPECT_EQ(done.err.count("only its tags were copied anew"), 1) << done.err.constData();
    EXPECT_TRUE(output(u"b.wv"_s).contains("New"));
    EXPECT_EQ(output(u"a.wv"_s), ofA);
    EXPECT_NE(output(u"c.wv"_s), ofC);
    EXPECT_TRUE(run(update).err.contains("nothing to do"));
    // A title that went is not left behind.
    QThread::msleep(20);
    ASSERT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u""_s, u"--write-empty"_s, u"b.flac"_s}).status, 0);
    EXPECT_EQ(run(update).status, 0);
    EXPECT_FALSE(output(u"b.wv"_s).contains("New"));
}

TEST_F(UpdateTest, LeavesAloneWhatItDidNotMake)
{
    const QStringList update = toWavPack + QStringList{u"--update"_s};
    folder.write(u"music/out/c.wv"_s, "somebody else's");
    QFile file(music + u"/out/c.wv"_s);
    ASSERT_TRUE(
        file.open(QIODevice::ReadWrite) &&
        file.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000), QFileDevice::FileModificationTime));
    file.close();
    EXPECT_EQ(run(update).status, 1);
    EXPECT_EQ(output(u"c.wv"_s), "somebody else's");
}

/// An original that is to stay is never the output's place.
TEST_F(UpdateTest, KeepsAnOriginalThatHoldsMoreThanItsOutput)
{
    QFile tagged(music + u"/a.flac"_s);
    ASSERT_TRUE(tagged.open(QIODevice::Append));
    tagged.write(QByteArray("TAG").leftJustified(128, ' '));
    tagged.close();
    const QByteArray before = readFile(tagged.fileName());
    const QStringList command{u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, u"--overwrite"_s,
                              u"a.flac"_s};
    EXPECT_TRUE(encode(command + QStringList{u"--dry-run"_s}).out.startsWith("refuse"));
    EXPECT_EQ(encode(command).status, 1);
    EXPECT_EQ(readFile(tagged.fileName()), before);
}

TEST_F(UpdateTest, WithoutARecordTheAudioSaysWhatIsDone)
{
    journal.clear();
    replaceSource(u"c"_s);
    const QByteArray ofA = output(u"a.wv"_s);
    const QByteArray ofC = output(u"c.wv"_s);
    QFile::remove(music + u"/out/b.wv"_s);
    const QStringList skip = toWavPack + QStringList{u"--skip-done"_s};
    EXPECT_EQ(run(skip + QStringList{u"--dry-run"_s}).out.count("check "), 2);
    const Outcome done = run(skip);
    EXPECT_EQ(done.status, 1) << "c.wv holds something else";
    EXPECT_TRUE(done.err.contains("It was left as it is")) << done.err.constData();
    EXPECT_EQ(output(u"a.wv"_s), ofA);
    EXPECT_EQ(output(u"c.wv"_s), ofC);
    EXPECT_TRUE(QFile::exists(music + u"/out/b.wv"_s));
}

TEST_F(PlanTest, LearnsWhatFilesCostAndStopsBeforeADiskIsFull)
{
    QDir(music).mkpath(u"first"_s);
    QDir(music).mkpath(u"next"_s);
    for (int index = 0; index < 8; ++index) {
        wav(u"first/%1.wav"_s.arg(index), 20'000);
        wav(u"next/%1.wav"_s.arg(index), 30'000);
    }
    const QStringList into{u"-o"_s, u"other place"_s, u"--overwrite"_s};
    ASSERT_EQ(encode(into + QStringList{u"first"_s}).status, 0);
    const QJsonObject totals =
        objects(encode(into + QStringList{u"--dry-run"_s, u"--json"_s, u"next"_s}).out).back();
    EXPECT_GT(totals[u"seconds"].toDouble(), 0.0);
    ASSERT_EQ(encode(into + QStringList{u"next"_s}).status, 0);
    double made = 0;
    for (const QString &name : QDir(music + u"/other place"_s).entryList({u"*.flac"_s}, QDir::Files)) {
        made += static_cast<double>(QFileInfo(music + u"/other place/"_s + name).size());
    }
    EXPECT_NEAR(totals[u"bytes"].toDouble() / made, 1.0, 0.2);

    inJournal("UPDATE receipt_files SET size = 1000000000000000 WHERE role = 'output'");
    const Outcome refused = encode(into + QStringList{u"next"_s});
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(refused.err.contains("are missing")) << refused.err.constData();
    EXPECT_EQ(encode(into + QStringList{u"--dry-run"_s, u"next"_s}).status, 1);
    EXPECT_EQ(encode(into + QStringList{u"--ignore-space"_s, u"next"_s}).status, 0);
}

} // namespace kruv::test
