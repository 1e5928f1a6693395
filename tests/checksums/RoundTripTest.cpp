// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/TabRun.h"
#include "support/Audio.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

/// A folder with one short noise in every format whose tools are installed here.
class RoundTrip : public testing::Test
{
protected:
    RoundTrip()
    {
        const AudioShape shape{.frames = 20000, .signal = Signal::Noise};
        writeWav(path("a b 'c' 50%.wav"), shape);
        writeAiff(path("-dash.aiff"), shape);
        outputOf(u"flac"_s, {u"-s"_s, path("a b 'c' 50%.wav"), u"-o"_s, path("Übung.flac")}, folder);
        outputOf(u"wavpack"_s, {u"-q"_s, path("a b 'c' 50%.wav"), u"-o"_s, path("x.wv")}, folder);
        files = {path("a b 'c' 50%.wav"), path("-dash.aiff"), path("Übung.flac"), path("x.wv")};
    }

    QString path(const char *name) const { return folder + u'/' + QString::fromUtf8(name); }
    QStringList linesOf(const QString &file) const
    {
        QStringList lines = QString::fromUtf8(readFile(file)).split(u'\n', Qt::SkipEmptyParts);
        lines.removeIf([](const QString &line) { return line.startsWith(u'#') || line.startsWith(u';'); });
        lines.sort();
        return lines;
    }
    static QStringList sorted(const QString &text)
    {
        QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
        lines.sort();
        return lines;
    }
    void damage(const QString &file) const
    {
        QByteArray bytes = readFile(file);
        bytes[bytes.size() / 2] = static_cast<char>(bytes[bytes.size() / 2] ^ 1);
        writeFile(file, bytes);
    }

    TabRun kruv;
    QString folder = kruv.folder.makeFolder(u"album"_s);
    QStringList files;
};

TEST_F(RoundTrip, Md5ListsAreThoseOfMd5sum)
{
    writeFile(path("new\nline.wav"), "x");
    files << path("new\nline.wav");
    kruv.create(u"MD5"_s, files);
    int status = -1;
    const QString said = outputOf(u"md5sum"_s, {u"-c"_s, u"--strict"_s, u"md5sum.md5"_s}, folder, &status);
    EXPECT_EQ(status, 0) << said.toStdString();
    EXPECT_EQ(said.count(u": OK"_s), files.size());

    QStringList arguments{u"-b"_s, u"--"_s};
    for (const QString &name : QDir(folder).entryList(QDir::Files)) {
        arguments << name;
    }
    writeFile(path("other.md5"), outputOf(u"md5sum"_s, arguments, folder).toUtf8());
    const QString report = kruv.verifyLists({path("other.md5")});
    EXPECT_TRUE(report.startsWith(u"Verify MD5: other.md5\n"_s)) << report.toStdString();
    EXPECT_EQ(report.count(u" : OK\n"_s), arguments.size() - 2) << report.toStdString();
}

TEST_F(RoundTrip, Md5ListsFindEveryFault)
{
    writeWav(path("kept.wav"), {.frames = 100});
    writeWav(path("renamed.wav"), {.frames = 100});
    kruv.create(u"MD5"_s, files + QStringList{path("kept.wav"), path("renamed.wav")});
    damage(files[0]);
    ASSERT_TRUE(QFile::remove(files[1]));
    ASSERT_TRUE(QFile::resize(files[2], 1000));
    ASSERT_TRUE(QFile::rename(path("renamed.wav"), path("moved.wav")));
    const QStringList report = sorted(kruv.verifyLists({path("md5sum.md5")}));
    EXPECT_EQ(report, sorted(u"Verify MD5: md5sum.md5\na b 'c' 50%.wav : FAILED\n-dash.aiff : FAILED\n"
                             "Übung.flac : FAILED\nx.wv : OK\nkept.wav : OK\nrenamed.wav : FAILED\n"_s));
}

TEST_F(RoundTrip, Md5ListsOverSubfoldersVerify)
{
    const QString sub = kruv.folder.makeFolder(u"album/disc 2"_s);
    writeWav(sub + u"/y.wav"_s, {.frames = 100});
    kruv.person.textAnswers.push_back(path("all.md5"));
    ASSERT_TRUE(kruv.tab.createChecksumOptions().selectId(u"md5"_s));
    kruv.tab.sourceSaveButton().setOn(true);
    kruv.run(ChecksumTab::CreateList, {files[0], sub + u"/y.wav"_s});
    const QStringList lines = linesOf(path("all.md5"));
    EXPECT_EQ(lines.filter(u" */disc 2/y.wav"_s).size(), 1) << lines.join(u'\n').toStdString();
    EXPECT_EQ(sorted(kruv.verifyLists({path("all.md5")})),
              sorted(u"Verify MD5: all.md5\na b 'c' 50%.wav : OK\ny.wav : OK\n"_s));
}

TEST_F(RoundTrip, St5ListsAreThoseOfShntool)
{
    kruv.create(u"ST5"_s, files);
    const QStringList ours = linesOf(path("checksum.st5"));
    ASSERT_EQ(ours.size(), 4);
    for (const QString &line : ours) {
        EXPECT_EQ(line.left(32), ours[0].left(32)) << "the same audio in every format";
    }
    const QStringList arguments{u"hash"_s, u"-q"_s, u"-m"_s, u"a b 'c' 50%.wav"_s, u"Übung.flac"_s};
    const QStringList tools = sorted(outputOf(u"shntool"_s, arguments, folder));
    EXPECT_EQ(tools.size(), 2);
    for (const QString &line : tools) {
        EXPECT_TRUE(ours.contains(line)) << line.toStdString();
    }
    QString report = kruv.verifyLists({path("checksum.st5")});
    EXPECT_EQ(report.count(u" : OK\n"_s), 4) << report.toStdString();

    damage(files[0]);
    ASSERT_TRUE(QFile::remove(files[3]));
    report = kruv.verifyLists({path("checksum.st5")});
    EXPECT_TRUE(report.contains(u"a b 'c' 50%.wav : did not match shntool md5 file\n"_s));
    EXPECT_TRUE(report.contains(u"x.wv : shntool [hash]: warning: cannot open non-existent file: [x.wv]\n"_s))
        << report.toStdString();
    EXPECT_EQ(report.count(u" : OK\n"_s), 2);
}

TEST_F(RoundTrip, St5ListsOfManyFilesAreWhole)
{
    QStringList many;
    for (int index = 0; index < 150; ++index) {
        many << path(qPrintable(u"a rather long name for a track %1.wav"_s.arg(index)));
        writeWav(many.last(), {.frames = 588, .seed = static_cast<std::uint32_t>(index + 1)});
    }
    kruv.create(u"ST5"_s, many);
    EXPECT_EQ(linesOf(path("checksum.st5")).size(), 150);
    EXPECT_EQ(kruv.verifyLists({path("checksum.st5")}).count(u" : OK\n"_s), 150);
}

TEST_F(RoundTrip, FingerprintsAreThoseOfMetaflac)
{
    kruv.create(u"FFP"_s, files);
    EXPECT_EQ(linesOf(path("fingerprint.ffp.txt")),
              QStringList(u"Übung.flac:"_s +
                          outputOf(u"metaflac"_s, {u"--show-md5sum"_s, files[2]}, folder).trimmed()));
    EXPECT_EQ(kruv.verifyLists({path("fingerprint.ffp.txt")}),
              u"Verify FFP: fingerprint.ffp.txt\nÜbung.flac : OK\n\nVerify Flac Files in album\n"
              "Übung.flac: testing, 100% complete\n\n"_s);
}

TEST_F(RoundTrip, FingerprintListsFindEveryFault)
{
    QByteArray list = readFile(kruv.folder.write(u"album/l.ffp"_s, ";comment\n"));
    const QByteArray good = outputOf(u"metaflac"_s, {u"--show-md5sum"_s, files[2]}, folder).toUtf8();
    QFile::copy(files[2], path("copy.flac"));
    QFile::copy(files[2], path("a:b.flac"));
    list += "Übung.flac:" + good + "copy.flac:00000000000000000000000000000000\r\n" + "a:b.flac:" + good +
            "none.flac:" + good + "a b 'c' 50%.wav:" + good;
    writeFile(path("l.ffp"), list);
    damage(files[2]); // in the audio: the header still has the fingerprint
    const QString report = kruv.verifyLists({path("l.ffp")});
    EXPECT_TRUE(report.contains(u"Übung.flac : OK\n"_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u"copy.flac : did not match fingerprint file\n"_s));
    EXPECT_TRUE(report.contains(u"NOT_A_FLAC_FILE"_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u"ERROR_OPENING_FILE"_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u" : none.flac\n"_s));
    EXPECT_TRUE(report.contains(u" : a\n"_s)) << "a name with a colon is cut at it";
    EXPECT_TRUE(report.contains(u"\nVerify Flac Files in album\nÜbung.flac: ERROR"_s))
        << report.toStdString();
}

TEST_F(RoundTrip, AudioFilesAreTestedByTheirOwnCodecs)
{
    QFile::copy(files[2], path("bad.FLAC"));
    QFile::copy(files[3], path("bad.wv"));
    damage(path("bad.FLAC"));
    damage(path("bad.wv"));
    const QString report =
        kruv.run(ChecksumTab::VerifyAudio, files + QStringList{path("bad.FLAC"), path("bad.wv")});
    EXPECT_TRUE(report.contains(u"Übung.flac: ok\n"_s)) << report.toStdString();
    EXPECT_TRUE(report.contains(u"x.wv: ok\n"_s));
    EXPECT_TRUE(report.contains(u"bad.FLAC: "_s)) << report.toStdString();
    EXPECT_FALSE(report.contains(u"bad.FLAC: ok"_s));
    EXPECT_TRUE(report.contains(u"bad.wv: missing data or crc errors detected"_s)) << report.toStdString();
    EXPECT_FALSE(report.contains(u"bad.wv: ok"_s));
    EXPECT_FALSE(report.contains(u"50%.wav"_s)) << "WAV has no codec of its own";
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
}

} // namespace
