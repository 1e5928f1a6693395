// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"
#include "support/TaggedAudio.h"
#include "support/Wait.h"
#include "tags/FileEdit.h"
#include "tasks/StagingLock.h"

#include <QDateTime>
#include <QDirIterator>
#include <QMap>

namespace kruv::test {

namespace {

class UndoTest : public Program
{
protected:
    void SetUp() override { journal = folder.file(u"state/journal.db"_s); }
    Outcome undo(const QStringList &more = {}) { return run(QStringList{u"undo"_s} + more); }
    void useTrash()
    {
        folder.makeFolder(u"kruv"_s);
        folder.write(u"kruv/kruv.conf"_s, "[General]\ntrashOrDelete=1\n");
    }
    QMap<QString, QByteArray> everything() const
    {
        QMap<QString, QByteArray> all;
        QDirIterator walk(music, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            all.insert(path.mid(music.size()), readFile(path));
        }
        return all;
    }
};

} // namespace

TEST_F(UndoTest, PutsTagsBackByteForByteAndForthAgain)
{
    const AudioFolder made;
    for (const QString &extension : {u"flac"_s, u"mp3"_s, u"m4a"_s, u"ogg"_s, u"aiff"_s, u"wv"_s, u"tta"_s}) {
        QFile::copy(made.audio(extension), music + u"/it's 100%."_s + extension);
    }
    const auto plain = everything();
    const QString long1000(1000, u'x');
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, long1000, u"--artist"_s, u"A"_s, music}).status, 0);
    const auto tagged = everything();
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"short"_s, u"--year"_s, u"1999"_s, music}).status, 0);

    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(everything() == tagged);
    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(everything() == plain);
    EXPECT_TRUE(undo().err.contains("nothing to undo"));
    EXPECT_EQ(undo({u"4"_s}).status, 0) << "the second undo";
    EXPECT_TRUE(everything() == tagged);
    EXPECT_EQ(undo({u"4"_s}).status, 2) << "which is undone now";
}

TEST_F(UndoTest, LeavesAloneWhatWasChangedSince)
{
    const AudioFolder made;
    for (const QString &name : {u"a"_s, u"b"_s}) {
        QFile::copy(made.audio(u"flac"_s, name), music + u'/' + name + u".flac"_s);
    }
    const QByteArray plain = readFile(music + u"/a.flac"_s);
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"W"_s, music}).status, 0);
    const QByteArray before = readFile(music + u"/a.flac"_s);
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"X"_s, music}).status, 0);
    QFile changed(music + u"/b.flac"_s);
    ASSERT_TRUE(changed.open(QIODevice::Append) && changed.write("more") == 4);
    changed.close();
    QFile touched(music + u"/a.flac"_s);
    ASSERT_TRUE(touched.open(QIODevice::ReadWrite) &&
                touched.setFileTime(QDateTime::currentDateTime().addDays(-1), QFile::FileModificationTime));
    touched.close();
    const QByteArray theirs = readFile(changed.fileName());
    const Outcome outcome = undo();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains("b.flac was changed")) << outcome.err.constData();
    EXPECT_EQ(readFile(music + u"/a.flac"_s), before);
    EXPECT_TRUE(undo().out.startsWith("Run 1, ")) << "not the rest of the other";
    EXPECT_EQ(readFile(music + u"/a.flac"_s), plain);
    EXPECT_EQ(readFile(changed.fileName()), theirs);
}

TEST_F(UndoTest, OnlyOneProcessTakesARunBack)
{
    const AudioFolder made;
    QFile::copy(made.audio(u"flac"_s), music + u"/a.flac"_s);
    const auto plain = everything();
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"X"_s, music}).status, 0);
    inJournal("UPDATE runs SET undoing = CAST(? AS TEXT)", StagingLock::thisProcess());
    const Outcome outcome = undo();
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(outcome.err.contains("run 1 is being undone by another process")) << outcome.err.constData();
    const QByteArray gone = StagingLock::thisProcess().trimmed();
    inJournal("UPDATE runs SET undoing = CAST(? AS TEXT)", gone.first(gone.lastIndexOf('\n') + 1) + '1');
    EXPECT_EQ(undo().status, 0) << "the other one was killed";
    EXPECT_TRUE(everything() == plain);
}

TEST_F(UndoTest, SaysWhichRunItTakes)
{
    const AudioFolder made;
    QFile::copy(made.audio(u"flac"_s), music + u"/a.flac"_s);
    const auto plain = everything();
    const auto set = [this](const QString &title) {
        EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, title, music}).status, 0);
    };
    const QByteArray olderOne = "(the latest run that can be taken back)\n";
    set(u"1"_s);
    Outcome outcome = undo();
    EXPECT_TRUE(outcome.out.startsWith("Run 1, tags set, 20") && !outcome.out.contains(olderOne))
        << outcome.out.constData();
    set(u"3"_s);
    EXPECT_EQ(encode({u"-o"_s, folder.makeFolder(u"out"_s), wav(u"w.wav"_s)}).status, 0);
    QFile::remove(music + u"/w.wav"_s);
    outcome = undo({u"--json"_s});
    EXPECT_EQ(objects(outcome.out).at(0)[u"run"], 3);
    EXPECT_TRUE(everything() == plain);
    set(u"6"_s);
    EXPECT_EQ(encode({u"-o"_s, folder.file(u"out"_s), u"--overwrite"_s, music}).status, 0);
    EXPECT_EQ(undo({u"-q"_s, u"7"_s}).status, 2) << "made files stay";
    outcome = undo();
    EXPECT_TRUE(outcome.out.startsWith("Run 6, ") && outcome.out.endsWith(olderOne))
        << outcome.out.constData();
    EXPECT_TRUE(everything() == plain);
}

TEST_F(UndoTest, RefusesWhatIsNoRun)
{
    for (const QString &verb : {u"undo"_s, u"resume"_s}) {
        for (const QString &number : {u"0"_s, u""_s, u"-1"_s, u"latest"_s, u"999"_s}) {
            const Outcome outcome = run({verb, number});
            EXPECT_EQ(outcome.status, 2);
            EXPECT_TRUE(
                outcome.err.contains(number == u"999" ? "there is no run 999" : "give a run's number"))
                << outcome.err.constData();
            EXPECT_EQ(outcome.err.count('\n'), 1);
        }
    }
    writeFile(folder.makeFolder(u"state"_s) + u"/journal.db"_s, QByteArray(5000, 'x'));
    EXPECT_EQ(undo().status, 1);
    EXPECT_TRUE(undo().err.contains("The journal " + journal.toUtf8() + " can't be read"))
        << undo().err.constData();
    journal.clear();
    EXPECT_EQ(undo().status, 2);
    EXPECT_TRUE(undo().err.contains("KRUV_JOURNAL")) << undo().err.constData();
}

TEST_F(UndoTest, TouchesNothingWhereTheJournalIsDamaged)
{
    const AudioFolder made;
    QFile::copy(made.audio(u"flac"_s), music + u"/a.flac"_s);
    const auto plain = everything();
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"X"_s, music}).status, 0);
    const auto tagged = everything();
    const QByteArray damaged[] = {
        "nothing that was packed",
        FileEdit::pack({{{{.offset = 1 << 30, .removed = 5}}}}),
        FileEdit::pack({{{{.offset = 4, .removed = 1, .inserted = "other bytes"}}}}),
    };
    for (const QByteArray &each : damaged) {
        inJournal("UPDATE ways_back SET data = ?", each);
        const Outcome outcome = undo();
        EXPECT_EQ(outcome.status, 1);
        EXPECT_TRUE(outcome.err.contains("a.flac held before was not kept")) << outcome.err.constData();
        EXPECT_TRUE(everything() == tagged);
    }
    EXPECT_FALSE(everything() == plain);
}

TEST_F(UndoTest, PutsBackWhatAnotherToolWroteIntoFlacFiles)
{
    folder.makeFolder(u"kruv"_s);
    folder.write(u"kruv/kruv.conf"_s, "[General]\nnoPaddingFlacTags=true\n");
    const AudioFolder made;
    for (const QString &name : {u"a"_s, u"it's 100% b"_s}) {
        QFile::copy(made.audio(u"flac"_s, u"a"_s), music + u'/' + name + u".flac"_s);
    }
    const auto plain = everything();
    EXPECT_EQ(run({u"tags"_s, u"set"_s, u"--title"_s, u"without padding"_s, music}).status, 0);
    const auto tagged = everything();
    EXPECT_EQ(run({u"util"_s, u"replay-gain"_s, music}).status, 0);
    const auto gained = everything();
    ASSERT_FALSE(gained == tagged);

    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(everything() == tagged);
    EXPECT_EQ(undo({u"3"_s}).status, 0) << "the undo";
    EXPECT_TRUE(everything() == gained);
    EXPECT_EQ(undo({u"4"_s}).status, 0);
    EXPECT_EQ(undo({u"1"_s}).status, 0);
    EXPECT_TRUE(everything() == plain);

    inJournal("UPDATE entries SET state = 'complete' WHERE run = 1"); // as where the undo was killed
    EXPECT_EQ(undo({u"1"_s}).status, 0);
    EXPECT_TRUE(everything() == plain);

    EXPECT_EQ(run({u"util"_s, u"replay-gain"_s, music}).status, 0);
    writeFile(music + u"/a.flac"_s, "somebody else's");
    const Outcome partly = undo();
    EXPECT_EQ(partly.status, 1);
    EXPECT_TRUE(partly.err.contains("Taken back all the same: " + music.toUtf8() + "/it's 100% b.flac."))
        << partly.err.constData();
    EXPECT_EQ(readFile(music + u"/it's 100% b.flac"_s), plain[u"/it's 100% b.flac"_s]);
}

TEST_F(UndoTest, GivesFilesTheirOldNamesBack)
{
    for (const QString &name : {u"one.wav"_s, u"two.wav"_s, u"three.wav"_s}) {
        wav(name);
    }
    const auto before = everything();
    const QStringList rename{u"util"_s, u"rename"_s, u"--prefix"_s, u"Disc"_s, music};
    EXPECT_EQ(run(rename).status, 0);
    EXPECT_EQ(files(u"Disc*"_s).size(), 3);
    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(everything() == before);

    EXPECT_EQ(run(rename).status, 0);
    writeFile(music + u"/one.wav"_s, "somebody else's");
    EXPECT_EQ(undo().status, 1);
    EXPECT_EQ(readFile(music + u"/one.wav"_s), "somebody else's");
    EXPECT_EQ(files(u"*"_s).size(), 4);
    QFile::remove(music + u"/one.wav"_s);
    EXPECT_EQ(undo().status, 0) << "what is left of it";
    EXPECT_TRUE(everything() == before);
}

TEST_F(UndoTest, TakesBackRenamesThatAKillInterrupted)
{
    for (int index = 0; index < 2000; ++index) {
        writeFile(music + u"/%1.txt"_s.arg(index), QByteArray::number(index));
    }
    const auto before = everything();
    const auto renaming = start({u"util"_s, u"rename"_s, u"--prefix"_s, u"Disc"_s, music});
    ASSERT_TRUE(waitUntil([this] { return !files(u"Disc*"_s).isEmpty(); }));
    renaming->kill();
    end(*renaming);
    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(everything() == before);
}

TEST_F(UndoTest, BringsOriginalsOutOfTheTrash)
{
    useTrash();
    const QString a = wav(u"a.wav"_s, 900);
    const QByteArray bytes = readFile(a);
    const QStringList command{u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, a};
    EXPECT_EQ(encode(command).status, 0);
    ASSERT_FALSE(QFile::exists(a));
    wav(u"a.wav"_s, 500); // another one of that name goes the same way
    EXPECT_EQ(encode(command + QStringList{u"--overwrite"_s}).status, 0);
    const Outcome outcome = undo({u"1"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.err.contains("a.flac was made, and stays")) << outcome.err.constData();
    EXPECT_EQ(readFile(a), bytes);
    EXPECT_TRUE(QFile::exists(music + u"/a.flac"_s));
    EXPECT_EQ(undo({u"2"_s}).status, 1) << "its name is taken";
    EXPECT_EQ(readFile(a), bytes);
    EXPECT_EQ(undo({u"3"_s}).status, 0) << "the undo";
    EXPECT_FALSE(QFile::exists(a));
    EXPECT_EQ(undo({u"5"_s}).status, 0) << "and that";
    EXPECT_EQ(readFile(a), bytes);

    const QString b = wav(u"b.wav"_s);
    EXPECT_EQ(encode({u"--beside-source"_s, u"--delete-originals"_s, u"-y"_s, b}).status, 0);
    EXPECT_EQ(undo().status, 0);
    EXPECT_TRUE(run({u"history"_s, u"show"_s, u"7"_s}).out.contains("b.flac stays"));
}

} // namespace kruv::test
