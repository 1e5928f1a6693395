// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Program.h"
#include "support/QtPrinters.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonArray>
#include <QSet>

namespace kruv::test {

namespace {

/// An album as people have it: two discs with equal names, hostile tags, and what lies beside the audio.
class NamesTest : public Program
{
protected:
    void SetUp() override
    {
        for (const char *each : {"set/CD1", "set/CD2", "set/Art", "out"}) {
            QDir(music).mkpath(QString::fromUtf8(each));
        }
        track(u"CD1/t01"_s, {u"TITLE=../evil\nline"_s, u"DISCNUMBER=1"_s, u"TRACKNUMBER=1"_s});
        track(u"CD1/t02"_s, {u"TITLE="_s + note.repeated(100), u"DISCNUMBER=1"_s, u"TRACKNUMBER=2"_s});
        track(u"CD2/t01"_s, {u"TITLE=../evil\nline"_s, u"DISCNUMBER=2/2"_s, u"TRACKNUMBER=1"_s});
        track(u"CD2/t02"_s, {u"DISCNUMBER=2/2"_s, u"TRACKNUMBER=2"_s});
        folder.write(u"music/set/CD1/Set.CUE"_s, cue.replace("%1", "T01.WAV"));
        folder.write(u"music/set/CD1/set.ffp"_s, "t01.flac:00000000000000000000000000000000\n");
        folder.write(u"music/set/CD2/set.st5"_s, "00000000000000000000000000000000  [shntool]  t01.flac\n");
        for (const char *each : {"CD1/cover.jpg", "CD2/cover.jpg", "Art/back.png", "CD2/.hidden.txt"}) {
            folder.write(u"music/set/"_s + QString::fromUtf8(each), "picture");
        }
        folder.write(u"music/set/empty.nfo"_s, "");
        QFile notes(folder.write(u"music/set/notes: a.txt"_s, "hello\r\n"));
        ASSERT_TRUE(notes.open(QIODevice::ReadWrite));
        notes.setFileTime(QDateTime::fromSecsSinceEpoch(longAgo), QFileDevice::FileModificationTime);
        notes.setPermissions(QFile::ReadOwner);
    }
    /// A FLAC file, a length of its own each.
    void track(const QString &name, const QStringList &tags)
    {
        const QString source = wav(u"temporary.wav"_s, 500 + 10 * ++m_tracks);
        const QString path = music + u"/set/"_s + name + u".flac"_s;
        ASSERT_EQ(QProcess::execute(u"flac"_s, {u"-s"_s, u"-o"_s, path, source}), 0);
        QStringList arguments{u"--set-tag=ARTIST=AC/DC"_s, u"--set-tag=ALBUM=Live: 99?"_s,
                              u"--set-tag=DATE=1999"_s};
        for (const QString &tag : tags) {
            arguments.append(u"--set-tag="_s + tag);
        }
        ASSERT_EQ(QProcess::execute(u"metaflac"_s, arguments + QStringList{path}), 0);
        QFile::remove(source);
    }
    QSet<QString> filesBelow(const QString &below) const
    {
        QSet<QString> all;
        QDirIterator walk(music + below, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            all.insert(walk.next().mid(music.size() + below.size()));
        }
        return all;
    }
    /// Runs a command after a dry run of it that has announced the same files.
    Outcome runAnnounced(const QStringList &command)
    {
        const QSet<QString> before = filesBelow(u"/"_s);
        const Outcome dry = run(command + QStringList{u"--dry-run"_s, u"--json"_s});
        EXPECT_EQ(filesBelow(u"/"_s), before);
        QSet<QString> announced = before;
        for (const QJsonObject &entry : objects(dry.out)) {
            const QString action = entry[u"action"].toString();
            if (action == u"make" || action == u"copy") {
                announced.insert(entry[u"output"].toString().mid(music.size() + 1));
            }
        }
        Outcome real = run(command);
        EXPECT_EQ(real.status, dry.status) << real.err.constData();
        EXPECT_EQ(filesBelow(u"/"_s), announced) << dry.out.constData();
        return real;
    }

    const QString note = u"\U0001F3B5"_s;
    static constexpr qint64 longAgo = 1'000'000'000;
    QByteArray cue = "REM caf\xe9\r\nFILE \"%1\" WAVE\r\n  TRACK 01 AUDIO\r\nFILE \"t02.flac\" WAVE\r\n"
                     "FILE \"nowhere.wav\" WAVE\n\n";

private:
    std::size_t m_tracks = 0;
};

} // namespace

TEST_F(NamesTest, TagsNameFilesAndFoldersAndWhatLiesBesideGoesAlong)
{
    const Outcome outcome = runAnnounced({u"encode"_s, u"--to"_s, u"wv"_s, u"-o"_s, u"out"_s, u"--name"_s,
                                          u"{albumartist}/{album} ({year})/CD{disc}/{track:02} {title}"_s,
                                          u"--portable-names"_s, u"--copy-others"_s, u"set"_s});
    EXPECT_EQ(outcome.status, 0) << outcome.err.constData();
    const QString album = u"AC-DC/Live- 99- (1999)/"_s;
    EXPECT_EQ(filesBelow(u"/out/"_s),
              QSet<QString>({album + u"CD1/01 ..-evil line.wv"_s,
                             album + u"CD1/02 "_s + note.repeated(62) + u".wv"_s,
                             album + u"CD2/01 ..-evil line.wv"_s, album + u"CD2/02 t02.wv"_s,
                             album + u"CD1/Set.CUE"_s, album + u"CD1/set.md5"_s, album + u"CD2/set.st5"_s,
                             album + u"CD1/cover.jpg"_s, album + u"CD2/cover.jpg"_s,
                             album + u"Art/back.png"_s, album + u"empty.nfo"_s, album + u"notes- a.txt"_s}));
    const QString made = music + u"/out/"_s + album;
    // Its encoding has no word for the second name.
    EXPECT_EQ(readFile(made + u"CD1/Set.CUE"_s), QByteArray(cue).replace("T01.WAV", "01 ..-evil line.wv"));
    EXPECT_TRUE(readFile(made + u"CD1/set.md5"_s).contains(" *01 ..-evil line.wv\n"));
    EXPECT_TRUE(readFile(made + u"CD2/set.st5"_s).contains("  [shntool]  02 t02.wv"));
    EXPECT_EQ(readFile(made + u"notes- a.txt"_s), "hello\r\n");
    EXPECT_EQ(QFileInfo(made + u"notes- a.txt"_s).lastModified().toSecsSinceEpoch(), longAgo);
}

TEST_F(NamesTest, OneFolderOfTwoTakesOneOfEqualFilesAndRefusesOthers)
{
    folder.write(u"music/set/CD2/Set.CUE"_s, "another");
    const Outcome outcome = runAnnounced({u"decode"_s, u"--to"_s, u"wav"_s, u"-o"_s, u"out"_s, u"--name"_s,
                                          u"{disc}-{track}"_s, u"--copy-others=pictures,cues"_s, u"set"_s});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains("Set.CUE")) << outcome.err.constData();
    EXPECT_EQ(filesBelow(u"/out/"_s), QSet<QString>({u"1-1.wav"_s, u"1-2.wav"_s, u"2-1.wav"_s, u"2-2.wav"_s,
                                                     u"cover.jpg"_s, u"Art/back.png"_s}));
}

TEST_F(NamesTest, MirroredNamesArePortableAndListsAreOfTheNewFiles)
{
    for (const char *each : {"a:b.wav", "Aux.wav", "x.wav", "X.wav"}) {
        wav(u"set/CD2/"_s + QString::fromUtf8(each), 300);
    }
    const QStringList command{
        u"encode"_s, u"--to"_s, u"flac"_s, u"-o"_s, u"out"_s, u"--mirror"_s, u"--copy-others=lists,text"_s,
        u"set"_s};
    EXPECT_EQ(runAnnounced(command + QStringList{u"--portable-names"_s}).status, 1);
    QSet<QString> expected{u"CD1/t01.flac"_s, u"CD1/t02.flac"_s, u"CD1/set.ffp"_s,   u"CD2/t01.flac"_s,
                           u"CD2/t02.flac"_s, u"CD2/a-b.flac"_s, u"CD2/Aux_.flac"_s, u"CD2/set.st5"_s,
                           u"empty.nfo"_s,    u"notes- a.txt"_s};
    EXPECT_EQ(filesBelow(u"/out/"_s), expected);
    EXPECT_EQ(readFile(music + u"/out/CD1/set.ffp"_s).count(".flac:"), 2);
    EXPECT_EQ(runAnnounced(command + QStringList{u"--skip-existing"_s}).status, 0);
    expected += {u"CD2/a:b.flac"_s, u"CD2/Aux.flac"_s, u"CD2/x.flac"_s, u"CD2/X.flac"_s, u"notes: a.txt"_s};
    EXPECT_EQ(filesBelow(u"/out/"_s), expected);
}

TEST_F(NamesTest, SaysWhatItCannotRead)
{
    const Outcome field = encode({u"-o"_s, u"out"_s, u"--name"_s, u"{artists}/{title}"_s, u"set"_s});
    EXPECT_EQ(field.status, 2);
    EXPECT_TRUE(field.err.contains("{artists}") && field.err.contains("{tracktotal}"))
        << field.err.constData();
    const Outcome kinds = encode({u"-o"_s, u"out"_s, u"--copy-others=films"_s, u"set"_s});
    EXPECT_EQ(kinds.status, 2);
    EXPECT_TRUE(kinds.err.contains("pictures")) << kinds.err.constData();
    EXPECT_TRUE(filesBelow(u"/out/"_s).isEmpty());
}

} // namespace kruv::test
