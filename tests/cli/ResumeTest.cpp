// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QDirIterator>
#include <QMap>
#include <QThread>

#include <random>

namespace kruv::test {

namespace {

/// A program that remembers, with runs that are broken off.
class ResumeTest : public Program
{
protected:
    void SetUp() override { journal = folder.file(u"state/journal.db"_s); }
    Outcome resume(const QStringList &more = {}) { return run(QStringList{u"resume"_s} + more); }
    bool isBegun() const
    {
        return QDirIterator(music, {u".kruv-*"_s}, QDir::Dirs | QDir::Hidden, QDirIterator::Subdirectories)
            .hasNext();
    }
    /// Starts what is killed so many milliseconds after it has begun, where it has not ended by itself.
    void killAfter(const QStringList &arguments, int milliseconds)
    {
        const auto process = start(arguments);
        ASSERT_TRUE(waitUntil([&] { return process->state() == QProcess::NotRunning || isBegun(); }));
        if (process->state() == QProcess::Running && !process->waitForFinished(milliseconds)) {
            process->kill();
        }
        end(*process);
    }
    /// A run of which only the files in `done` were encoded when it was killed.
    void breakOff(const QStringList &more, const QByteArray &done)
    {
        const QByteArray tool = resourcesFolder().toUtf8();
        const QByteArray stalled = folder.file(u"stalled"_s).toUtf8();
        shell(u"flac"_s, "case \"$*\" in " + done + ") exec '" + tool + "/flac' \"$@\";; esac\necho >> '" +
                             stalled + "'\nexec sleep 60\n");
        QFile::link(resourcesFolder() + u"/metaflac"_s, resources + u"/metaflac"_s);
        const auto process = start(
            QStringList{u"encode"_s, u"--to"_s, u"flac"_s, u"--beside-source"_s, u"--jobs"_s, u"1"_s} + more);
        ASSERT_TRUE(waitUntil([&stalled] { return QFile::exists(QString::fromUtf8(stalled)); }));
        QThread::msleep(700); // until the ends of the jobs before it are recorded
        process->kill();
        end(*process);
        resources = resourcesFolder();
    }
    /// Every file below the music folder, hidden ones too, with what is the same in any run.
    QMap<QString, QByteArray> everything() const
    {
        QMap<QString, QByteArray> all;
        QDirIterator walk(music, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            QByteArray bytes = readFile(path);
            if (path.endsWith(u".opus")) { // streams have a random number of their own
                bytes = "opus";
            } else if (path.endsWith(u".txt")) { // the first line says when
                bytes.remove(0, bytes.indexOf('\n'));
            }
            all.insert(path.mid(music.size()), bytes);
        }
        return all;
    }
    void refill()
    {
        QDir(music).removeRecursively();
        QDir().mkpath(music);
        for (int index = 0; index < 24; ++index) {
            wav(u"%1.wav"_s.arg(index), 2000 + 50 * static_cast<std::size_t>(index));
            folder.write(u"music/%1.log"_s.arg(index), QByteArray::number(index));
        }
        folder.write(u"music/set.cue"_s, "FILE \"3.wav\" WAVE\n");
        folder.write(u"music/set.md5.txt"_s, "00000000000000000000000000000000 *3.wav\n");
    }
};

} // namespace

TEST_F(ResumeTest, EndsWithTheFilesOfAnUndisturbedRunHoweverOftenItIsKilled)
{
    const QStringList commands[] = {
        {u"encode"_s, u"--to"_s, u"flac"_s, u"--delete-originals"_s, u"-y"_s, u"--fingerprints"_s},
        {u"encode"_s, u"--to"_s, u"wv"_s, u"--delete-originals"_s, u"-y"_s},
        {u"lossy"_s, u"--to"_s, u"opus"_s},
        {u"decode"_s, u"--to"_s, u"aiff"_s, u"--prove"_s},
        {u"encode"_s, u"--to"_s, u"wv"_s, u"--name"_s, u"{folder}/new {name}"_s, u"--copy-others"_s},
    };
    std::minstd_rand random(1);
    for (const QStringList &command : commands) {
        SCOPED_TRACE(command.join(u' ').toStdString());
        const QStringList whole = command + QStringList{u"--beside-source"_s, music};
        refill();
        ASSERT_EQ(run(whole).status, 0);
        const auto expected = everything();
        refill();
        killAfter(whole, static_cast<int>(random() % 200));
        for (int times = 0; times < 3; ++times) {
            killAfter({u"resume"_s}, 100 + static_cast<int>(random() % 200));
        }
        EXPECT_EQ(resume().status, 0);
        EXPECT_EQ(everything().keys(), expected.keys());
        EXPECT_TRUE(everything() == expected);
        EXPECT_TRUE(resume().err.contains("nothing to resume"));
    }
}

TEST_F(ResumeTest, ReplacesNothingButItsOwn)
{
    const QString a = wav(u"a.wav"_s, 5000);
    wav(u"b.wav"_s);
    wav(u"c.wav"_s);
    breakOff({u"--delete-originals"_s, u"-y"_s, music}, "none");
    // Made elsewhere meanwhile: other audio under the first name, the right one under the second.
    journal.clear();
    const QString other = folder.makeFolder(u"other"_s);
    writeWav(other + u"/a.wav"_s, {.frames = 700});
    EXPECT_EQ(encode({u"--output"_s, music, other}).status, 0);
    EXPECT_EQ(encode({u"--output"_s, music, music + u"/b.wav"_s}).status, 0);
    const QByteArray theirs = readFile(music + u"/a.flac"_s);
    SetUp();

    const Outcome outcome = resume();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains("may not be what was made of")) << outcome.err.constData();
    EXPECT_EQ(readFile(music + u"/a.flac"_s), theirs);
    EXPECT_EQ(files(u"*"_s), QStringList({u"a.flac"_s, u"a.wav"_s, u"b.flac"_s, u"c.flac"_s}));

    QFile::remove(music + u"/a.flac"_s);
    EXPECT_TRUE(resume().err.contains("nothing to resume")) << "what failed is left alone";
    EXPECT_EQ(resume({u"--failed"_s}).status, 0);
    EXPECT_EQ(files(u"*"_s), QStringList({u"a.flac"_s, u"b.flac"_s, u"c.flac"_s}));
}

TEST_F(ResumeTest, LeavesAloneWhatAPersonDidSince)
{
    for (const QString &name : {u"1 tagged.wav"_s, u"2 gone.wav"_s, u"3 same.wav"_s, u"4 left.wav"_s}) {
        wav(name);
    }
    breakOff({music}, "*tagged*|*gone*|*same*");
    ASSERT_EQ(files(u"*.flac"_s).size(), 3);
    QProcess::execute(u"metaflac"_s, {u"--set-tag=TITLE=mine"_s, music + u"/1 tagged.flac"_s});
    QFile::remove(music + u"/2 gone.flac"_s);
    const QByteArray tagged = readFile(music + u"/1 tagged.flac"_s);

    EXPECT_TRUE(run({u"history"_s}).out.contains("3 of 4 job(s) done"));
    const Outcome outcome = resume();
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    EXPECT_TRUE(outcome.err.contains("1 of 4 job(s)")) << outcome.err.constData();
    EXPECT_EQ(files(u"*.flac"_s).size(), 4);
    EXPECT_EQ(readFile(music + u"/1 tagged.flac"_s), tagged);
    EXPECT_TRUE(run({u"history"_s}).out.contains("4 job(s)  ")) << "one run, not two";
}

TEST_F(ResumeTest, MissesOriginalsThatNobodyConverted)
{
    for (const QString &name : {u"1 done.wav"_s, u"2 lost.wav"_s, u"3 text.wav"_s, u"4 left.wav"_s}) {
        wav(name);
    }
    breakOff({u"--delete-originals"_s, u"-y"_s, u"--fingerprints"_s, music}, "*done*");
    QFile::remove(music + u"/1 done.flac"_s);
    for (const QString &name : {u"/2 lost"_s, u"/3 text"_s}) {
        QFile::remove(music + name + u".wav"_s);
    }
    QDir(music).mkdir(u"2 lost.flac"_s);
    writeFile(music + u"/3 text.flac"_s, "somebody's");

    EXPECT_EQ(resume().status, 1);
    const QString list = music + u"/fingerprint.ffp.txt"_s;
    EXPECT_TRUE(readFile(list).contains("\n4 left.flac:")) << readFile(list).constData();
    EXPECT_EQ(readFile(music + u"/3 text.flac"_s), "somebody's");

    QDir(music).rmdir(u"2 lost.flac"_s);
    QFile::remove(music + u"/3 text.flac"_s);
    for (const QString &name : {u"1 done.wav"_s, u"2 lost.wav"_s, u"3 text.wav"_s}) {
        wav(name);
    }
    EXPECT_EQ(resume({u"--failed"_s}).status, 0);
    EXPECT_EQ(files(u"*.flac"_s).size(), 4);
    EXPECT_EQ(readFile(list).count(".flac:"), 4);
    EXPECT_EQ(files(u"*.wav"_s), QStringList());
}

TEST_F(ResumeTest, TheSameCommandSkipsWhatItMadeBefore)
{
    for (const bool deletes : {false, true}) {
        SCOPED_TRACE(deletes);
        refill();
        QStringList command{u"--fingerprints"_s, u"--beside-source"_s, u"--skip-done"_s, u"--json"_s, music};
        command += deletes ? QStringList{u"--delete-originals"_s, u"-y"_s} : QStringList();
        const auto jobs = [&](const QStringList &more = {}) {
            const Outcome outcome = encode(command + more);
            EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
            return outcome.out.count(R"("event":"started")");
        };
        EXPECT_EQ(jobs(), 25); // with the list
        EXPECT_EQ(jobs(), 0);
        wav(u"new.wav"_s);
        EXPECT_EQ(jobs(), 2);
        EXPECT_EQ(readFile(music + u"/fingerprint.ffp.txt"_s).count(".flac:"), 25);
        if (!deletes) { // other settings, or another source, give another file
            EXPECT_EQ(encode(command + QStringList{u"--level"_s, u"1"_s}).status, 2);
            wav(u"3.wav"_s, 9000);
            EXPECT_EQ(encode(command).status, 1) << "and the others stay done";
            EXPECT_EQ(jobs({u"--overwrite"_s}), 2);
        }
    }
}

TEST_F(ResumeTest, KnowsWhichRunsHaveSomethingLeft)
{
    EXPECT_EQ(resume().status, 0);
    EXPECT_EQ(resume({u"7"_s}).status, 2);
    wav(u"a.wav"_s);
    wav(u"b.wav"_s);
    breakOff({music}, "*a.*");
    const auto runs = objects(resume({u"--list"_s, u"--json"_s}).out);
    ASSERT_EQ(runs.size(), 1U);
    EXPECT_EQ(runs[0][u"status"], u"broken-off"_s);
    EXPECT_EQ(runs[0][u"complete"], 1);
    EXPECT_EQ(resume({u"--discard"_s}).status, 0);
    EXPECT_TRUE(resume().err.contains("nothing to resume"));
    EXPECT_EQ(files(u"*.flac"_s).size(), 1);

    EXPECT_EQ(run({u"verify"_s, music}).status, 0);
    EXPECT_EQ(resume({u"2"_s}).status, 2) << "nothing left";
}

TEST_F(ResumeTest, GoesOnWithOtherCommandsFileByFileOrSaysWhatToType)
{
    for (const QString &name : {u"1.wav"_s, u"-2 it's.wav"_s, u"3.wav"_s}) {
        wav(name);
    }
    EXPECT_EQ(encode({u"--beside-source"_s, music}).status, 0);
    EXPECT_EQ(run({u"verify"_s, u"--jobs"_s, u"1"_s, u"."_s}).status, 0);
    EXPECT_EQ(
        run({u"checksum"_s, u"create"_s, u"--kind"_s, u"md5"_s, u"--save"_s, u"a list.md5"_s, u"."_s}).status,
        0);
    // As where the second and the third run were killed.
    inJournal("UPDATE runs SET ended = NULL WHERE id > 1");
    inJournal("UPDATE entries SET state = 'waiting' WHERE run = 2 AND source LIKE '%it''s%'");
    inJournal("UPDATE entries SET state = 'running' WHERE run = 3");

    const Outcome listed = resume({u"--list"_s});
    EXPECT_EQ(listed.out.count('\n'), 1) << listed.out.constData();
    EXPECT_TRUE(listed.err.contains("kruv checksum create --kind md5 --save 'a list.md5' ."))
        << listed.err.constData();
    EXPECT_EQ(resume({u"3"_s}).status, 2);
    const Outcome outcome = resume();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.err.contains("run 2: 1 of ")) << outcome.err.constData();
    EXPECT_TRUE((outcome.out + outcome.err).contains("-2 it's.flac")) << outcome.out.constData();
    EXPECT_FALSE((outcome.out + outcome.err).contains("3.flac"));
    EXPECT_TRUE(resume().err.contains("nothing to resume"));
    EXPECT_EQ(resume({u"3"_s, u"--discard"_s}).status, 0);
    EXPECT_FALSE(resume({u"--list"_s}).err.contains("checksum create"));
}

} // namespace kruv::test
