// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/TabRun.h"
#include "support/Audio.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

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
        outputOf(QStringLiteral("flac"),
                 {QStringLiteral("-s"), path("a b 'c' 50%.wav"), QStringLiteral("-o"), path("Übung.flac")},
                 folder);
        outputOf(QStringLiteral("wavpack"),
                 {QStringLiteral("-q"), path("a b 'c' 50%.wav"), QStringLiteral("-o"), path("x.wv")}, folder);
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
    QString folder = kruv.folder.makeFolder(QStringLiteral("album"));
    QStringList files;
};

TEST_F(RoundTrip, Md5ListsAreThoseOfMd5sum)
{
    writeFile(path("new\nline.wav"), "x");
    files << path("new\nline.wav");
    kruv.create(QStringLiteral("MD5"), files);
    int status = -1;
    const QString said = outputOf(
        QStringLiteral("md5sum"),
        {QStringLiteral("-c"), QStringLiteral("--strict"), QStringLiteral("md5sum.md5")}, folder, &status);
    EXPECT_EQ(status, 0) << said.toStdString();
    EXPECT_EQ(said.count(QStringLiteral(": OK")), files.size());

    QStringList arguments{QStringLiteral("-b"), QStringLiteral("--")};
    for (const QString &name : QDir(folder).entryList(QDir::Files)) {
        arguments << name;
    }
    writeFile(path("other.md5"), outputOf(QStringLiteral("md5sum"), arguments, folder).toUtf8());
    const QString report = kruv.verifyLists({path("other.md5")});
    EXPECT_TRUE(report.startsWith(QStringLiteral("Verify MD5: other.md5\n"))) << report.toStdString();
    EXPECT_EQ(report.count(QStringLiteral(" : OK\n")), arguments.size() - 2) << report.toStdString();
}

TEST_F(RoundTrip, Md5ListsFindEveryFault)
{
    writeWav(path("kept.wav"), {.frames = 100});
    writeWav(path("renamed.wav"), {.frames = 100});
    kruv.create(QStringLiteral("MD5"), files + QStringList{path("kept.wav"), path("renamed.wav")});
    damage(files[0]);
    ASSERT_TRUE(QFile::remove(files[1]));
    ASSERT_TRUE(QFile::resize(files[2], 1000));
    ASSERT_TRUE(QFile::rename(path("renamed.wav"), path("moved.wav")));
    const QStringList report = sorted(kruv.verifyLists({path("md5sum.md5")}));
    EXPECT_EQ(report, sorted(QStringLiteral(
                          "Verify MD5: md5sum.md5\na b 'c' 50%.wav : FAILED\n-dash.aiff : FAILED\n"
                          "Übung.flac : FAILED\nx.wv : OK\nkept.wav : OK\nrenamed.wav : FAILED\n")));
}

TEST_F(RoundTrip, Md5ListsOverSubfoldersVerify)
{
    const QString sub = kruv.folder.makeFolder(QStringLiteral("album/disc 2"));
    writeWav(sub + QStringLiteral("/y.wav"), {.frames = 100});
    kruv.person.textAnswers.push_back(path("all.md5"));
    ASSERT_TRUE(kruv.tab.createChecksumOptions().selectTitle(QStringLiteral("MD5")));
    kruv.tab.sourceSaveButton().setOn(true);
    kruv.run(ChecksumTab::CreateList, {files[0], sub + QStringLiteral("/y.wav")});
    const QStringList lines = linesOf(path("all.md5"));
    EXPECT_EQ(lines.filter(QStringLiteral(" */disc 2/y.wav")).size(), 1) << lines.join(u'\n').toStdString();
    EXPECT_EQ(sorted(kruv.verifyLists({path("all.md5")})),
              sorted(QStringLiteral("Verify MD5: all.md5\na b 'c' 50%.wav : OK\ny.wav : OK\n")));
}

TEST_F(RoundTrip, St5ListsAreThoseOfShntool)
{
    kruv.create(QStringLiteral("ST5"), files);
    const QStringList ours = linesOf(path("checksum.st5"));
    ASSERT_EQ(ours.size(), 4);
    for (const QString &line : ours) {
        EXPECT_EQ(line.left(32), ours[0].left(32)) << "the same audio in every format";
    }
    const QStringList arguments{QStringLiteral("hash"), QStringLiteral("-q"), QStringLiteral("-m"),
                                QStringLiteral("a b 'c' 50%.wav"), QStringLiteral("Übung.flac")};
    const QStringList tools = sorted(outputOf(QStringLiteral("shntool"), arguments, folder));
    EXPECT_EQ(tools.size(), 2);
    for (const QString &line : tools) {
        EXPECT_TRUE(ours.contains(line)) << line.toStdString();
    }
    QString report = kruv.verifyLists({path("checksum.st5")});
    EXPECT_EQ(report.count(QStringLiteral(" : OK\n")), 4) << report.toStdString();

    damage(files[0]);
    ASSERT_TRUE(QFile::remove(files[3]));
    report = kruv.verifyLists({path("checksum.st5")});
    EXPECT_TRUE(report.contains(QStringLiteral("a b 'c' 50%.wav : did not match shntool md5 file\n")));
    EXPECT_TRUE(report.contains(
        QStringLiteral("x.wv : shntool [hash]: warning: cannot open non-existent file: [x.wv]\n")))
        << report.toStdString();
    EXPECT_EQ(report.count(QStringLiteral(" : OK\n")), 2);
}

TEST_F(RoundTrip, St5ListsOfManyFilesAreWhole)
{
    QStringList many;
    for (int index = 0; index < 150; ++index) {
        many << path(qPrintable(QStringLiteral("a rather long name for a track %1.wav").arg(index)));
        writeWav(many.last(), {.frames = 588, .seed = static_cast<std::uint32_t>(index + 1)});
    }
    kruv.create(QStringLiteral("ST5"), many);
    EXPECT_EQ(linesOf(path("checksum.st5")).size(), 150);
    EXPECT_EQ(kruv.verifyLists({path("checksum.st5")}).count(QStringLiteral(" : OK\n")), 150);
}

TEST_F(RoundTrip, FingerprintsAreThoseOfMetaflac)
{
    kruv.create(QStringLiteral("FFP"), files);
    EXPECT_EQ(
        linesOf(path("fingerprint.ffp.txt")),
        QStringList(QStringLiteral("Übung.flac:") +
                    outputOf(QStringLiteral("metaflac"), {QStringLiteral("--show-md5sum"), files[2]}, folder)
                        .trimmed()));
    EXPECT_EQ(
        kruv.verifyLists({path("fingerprint.ffp.txt")}),
        QStringLiteral("Verify FFP: fingerprint.ffp.txt\nÜbung.flac : OK\n\nVerify Flac Files in album\n"
                       "Übung.flac: testing, 100% complete\n\n"));
}

TEST_F(RoundTrip, FingerprintListsFindEveryFault)
{
    QByteArray list = readFile(kruv.folder.write(QStringLiteral("album/l.ffp"), ";comment\n"));
    const QByteArray good =
        outputOf(QStringLiteral("metaflac"), {QStringLiteral("--show-md5sum"), files[2]}, folder).toUtf8();
    QFile::copy(files[2], path("copy.flac"));
    QFile::copy(files[2], path("a:b.flac"));
    list += "Übung.flac:" + good + "copy.flac:00000000000000000000000000000000\r\n" + "a:b.flac:" + good +
            "none.flac:" + good + "a b 'c' 50%.wav:" + good;
    writeFile(path("l.ffp"), list);
    damage(files[2]); // in the audio: the header still has the fingerprint
    const QString report = kruv.verifyLists({path("l.ffp")});
    EXPECT_TRUE(report.contains(QStringLiteral("Übung.flac : OK\n"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("copy.flac : did not match fingerprint file\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("NOT_A_FLAC_FILE"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("ERROR_OPENING_FILE"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral(" : none.flac\n")));
    EXPECT_TRUE(report.contains(QStringLiteral(" : a\n"))) << "a name with a colon is cut at it";
    EXPECT_TRUE(report.contains(QStringLiteral("\nVerify Flac Files in album\nÜbung.flac: ERROR")))
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
    EXPECT_TRUE(report.contains(QStringLiteral("Übung.flac: ok\n"))) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("x.wv: ok\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("bad.FLAC: "))) << report.toStdString();
    EXPECT_FALSE(report.contains(QStringLiteral("bad.FLAC: ok")));
    EXPECT_TRUE(report.contains(QStringLiteral("bad.wv: missing data or crc errors detected")))
        << report.toStdString();
    EXPECT_FALSE(report.contains(QStringLiteral("bad.wv: ok")));
    EXPECT_FALSE(report.contains(QStringLiteral("50%.wav"))) << "WAV has no codec of its own";
    EXPECT_TRUE(kruv.tab.fileList().isEmpty());
}

} // namespace
