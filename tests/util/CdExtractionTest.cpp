// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "support/Session.h"
#include "tabs/UtilTab.h"
#include "util/CDExtractSCSIProviderHelper.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

constexpr int tracksOnDisc = 12;
constexpr int sectorsOfTrack = 2;
constexpr int sectorBytes = 2352;

/// A disc of twelve short tracks in the second DVD drive, shown by the desktop, and a stand-in for the tool.
class CdExtraction : public testing::Test
{
protected:
    CdExtraction()
    {
        const QString disc = u"files/cdda:host=sr2"_s;
        QDir(session.folder.path()).mkpath(disc);
        volume = session.folder.file(disc);
        makeDrives();
        makeDisc();
        const QString gio = session.folder.write(u"gio"_s, "#!/bin/sh\necho \"$@\" >> " + callsFile() + "\n");
        QFile::setPermissions(gio, QFile::ReadOwner | QFile::ExeOwner);
        platform.gio = gio;
        platform.gvfsFolder = session.folder.file(u"files"_s);
        platform.root = session.folder.file(u"root"_s);
        access.root = platform.root;
        access.arbitration = std::make_shared<DiscArbitration>(platform);
        QFile::link(QStringLiteral(KRUV_FAKE_CDDA2WAV), session.folder.file(u"tools/cdda2wav"_s));
    }

    /// Drives in the order of their numbers: a DVD drive, a CD drive, a DVD drive.
    void makeDrives()
    {
        for (int drive = 0; drive < 3; ++drive) {
            const QString block = u"root/sys/block/sr%1"_s.arg(drive);
            QDir(session.folder.path()).mkpath(block);
            session.folder.write(block + u"/dev"_s, u"11:%1\n"_s.arg(drive).toUtf8());
        }
        QDir(session.folder.path()).mkpath(u"root/run/udev/data"_s);
        for (const char *number : {"0", "2"}) {
            session.folder.write(u"root/run/udev/data/b11:"_s + QString::fromLatin1(number),
                                 "E:ID_CDROM=1\nE:ID_CDROM_DVD=1\n");
        }
    }

    void makeDisc()
    {
        session.folder.makeFolder(u"tools"_s);
        QByteArray cue = "FILE \"disc.bin\" BINARY\n";
        for (int track = 1; track <= tracksOnDisc; ++track) {
            cue += u"  TRACK %1 AUDIO\n    INDEX 01 00:00:%2\n"_s.arg(track, 2, 10, QLatin1Char('0'))
                       .arg((track - 1) * sectorsOfTrack, 2, 10, QLatin1Char('0'))
                       .toUtf8();
            session.folder.write(u"files/cdda:host=sr2/"_s + name(track) + u".aiff"_s, "on the disc");
        }
        const Audio noise = makeAudio({.frames = tracksOnDisc * sectorsOfTrack * sectorBytes / 4});
        image = wavBytes(noise).right(qsizetype{tracksOnDisc} * sectorsOfTrack * sectorBytes);
        session.folder.write(u"disc.bin"_s, image);
        session.folder.write(u"disc.cue"_s, cue);
    }

    static QString name(int track) { return u"%1 Song %% 5"_s.arg(track); }
    QByteArray callsFile() const { return session.folder.file(u"calls"_s).toUtf8(); }
    QByteArray audioOf(int first, int last) const
    {
        const qsizetype start = qsizetype{first - 1} * sectorsOfTrack * sectorBytes;
        return image.mid(start, qsizetype{last - first + 1} * sectorsOfTrack * sectorBytes);
    }
    QByteArray written(const QString &file) const
    {
        constexpr int header = 44;
        return readFile(out + u'/' + file).mid(header);
    }

    /// Extracts the tracks and waits until the disc is back on the desktop.
    void extract(int first, int last, bool oneFile = false)
    {
        const EnvironmentVariable resources("KRUV_RESOURCES", session.folder.file(u"tools"_s).toUtf8());
        const EnvironmentVariable cue("KRUV_TEST_CUE", session.folder.file(u"disc.cue"_s).toUtf8());
        UtilTab tab(session.controller, access);
        for (int track = last; track >= first; --track) {
            tab.addFile(volume + u'/' + name(track) + u".aiff"_s);
        }
        tab.oneTrackButton().setOn(oneFile);
        session.person.textAnswers = {out};
        tab.executeCommand();
        if (cancels) {
            session.controller.taskQueue().killAllTasks();
        }
        EXPECT_TRUE(session.runToEnd());
        if (!discWasTaken) {
            EXPECT_FALSE(QFile::exists(QString::fromUtf8(callsFile())));
            return;
        }
        if (cancels && !QFile::exists(QString::fromUtf8(callsFile()))) {
            return; // before the disc was taken
        }
        EXPECT_TRUE(waitUntil([this] {
            return QFile::exists(QString::fromUtf8(callsFile())) &&
                   readFile(QString::fromUtf8(callsFile())).count('\n') == 2;
        }));
        EXPECT_EQ(readFile(QString::fromUtf8(callsFile())),
                  "mount --unmount --force cdda://sr2/\nmount cdda://sr2/\n");
        QFile::remove(QString::fromUtf8(callsFile()));
    }

    Session session;
    QString volume;
    QString out = session.folder.makeFolder(u"out"_s);
    QByteArray image;
    DiscArbitration::Platform platform;
    CdAccess access{{}, nullptr, nullptr};
    bool cancels = false;
    bool discWasTaken = true;
};

} // namespace

TEST_F(CdExtraction, WritesEachTrackUnderItsNameWithALog)
{
    writeFile(out + u"/audio_04.wav"_s, "a person's own"); // the tool's name for it
    writeFile(out + u'/' + name(5) + u".wav"_s, "the last run's");
    session.person.buttonAnswers = {1};
    extract(3, 12);
    EXPECT_EQ(session.person.questions.at(0).text, out + u'/' + name(5) + u".wav"_s);
    for (const int track : {3, 4, 5, 9, 10, 12}) {
        EXPECT_EQ(written(name(track) + u".wav"_s), audioOf(track, track)) << track;
    }
    EXPECT_EQ(readFile(out + u"/audio_04.wav"_s), "a person's own");
    const QByteArray log = readFile(out + u"/Audio CD.log.txt"_s);
    EXPECT_TRUE(log.startsWith("Kruv " KRUV_VERSION " (build ")) << log.left(40).toStdString();
    EXPECT_TRUE(log.contains(")\nTable of Contents: total tracks:12,")) << log.left(90).toStdString();
    EXPECT_EQ(QDir(out).entryList(QDir::Files).size(), 12);
    EXPECT_FALSE(session.ended.at(0).error);
    EXPECT_TRUE(session.person.resultsWindows.empty());
}

TEST_F(CdExtraction, OneFileHoldsAllTracksAndASingleTrackGetsItsName)
{
    extract(3, 12, true);
    EXPECT_EQ(written(u"audio.wav"_s), audioOf(3, 12));
    QFile::remove(out + u"/audio.wav"_s);
    QFile::remove(out + u"/Audio CD.log.txt"_s);
    extract(7, 7, true);
    EXPECT_EQ(written(name(7) + u".wav"_s), audioOf(7, 7));
    session.person.buttonAnswers = {1}; // the log is there already
    extract(1, 1);
    EXPECT_EQ(written(name(1) + u".wav"_s), audioOf(1, 1));
}

TEST_F(CdExtraction, DriveThatGoesAwayLeavesTheWholeTracksNamedAndTheDiscBack)
{
    const EnvironmentVariable bad("KRUV_TEST_BAD_TRACK", "5");
    extract(3, 12);
    EXPECT_TRUE(session.ended.at(0).error);
    EXPECT_TRUE(session.ended.at(0).text.contains(u"Read error"_s)) << session.ended.at(0).text.toStdString();
    EXPECT_EQ(written(name(4) + u".wav"_s), audioOf(4, 4));
    EXPECT_EQ(namesIn(out), (QStringList{name(3) + u".wav"_s, name(4) + u".wav"_s, u"Audio CD.log.txt"_s}));
    EXPECT_TRUE(readFile(out + u"/Audio CD.log.txt"_s).contains("\ncdda2wav: Input/output error"));
}

TEST_F(CdExtraction, LeavesTheDiscWithoutAToolAndGivesItBackWhenCanceled)
{
    QFile::remove(session.folder.file(u"tools/cdda2wav"_s));
    discWasTaken = false;
    extract(1, 2);
    EXPECT_TRUE(session.ended.at(0).error);
    EXPECT_TRUE(session.ended.at(0).text.contains(u"icedax"_s));
    QFile::link(QStringLiteral(KRUV_FAKE_CDDA2WAV), session.folder.file(u"tools/cdda2wav"_s));
    cancels = true;
    discWasTaken = true;
    extract(1, 2);
    EXPECT_TRUE(session.ended.at(1).cancelled);
}

TEST_F(CdExtraction, NamesDrivesAndDiscs)
{
    const QStringList providers{u"IODVDServices"_s, u"IOCompactDiscServices"_s, u"IODVDServices/2"_s,
                                QString()};
    for (int drive = 0; drive < providers.size(); ++drive) {
        EXPECT_EQ(CDExtractSCSIProviderHelper(u"sr%1"_s.arg(drive), access.root).runTask(), providers[drive]);
    }
    QDir(session.folder.path()).mkpath(u"root/proc/self"_s);
    session.folder.write(
        u"root/proc/self/mountinfo"_s,
        "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
        "40 22 11:1 / /media/My\\040Disc ro,nosuid shared:9 master:1 - iso9660 /dev/sr1 ro\n");
    const std::pair<QString, QString> volumes[] = {
        {u"/media/My Disc"_s, u"sr1"_s}, {u"/"_s, u"sda1"_s}, {u"/media"_s, QString()}, {volume, u"sr2"_s},
        {u"/dev/sr0"_s, u"sr0"_s},
    };
    for (const auto &[folder, device] : volumes) {
        EXPECT_EQ(access.arbitration->discIdForVolumePath(folder), device) << folder.toStdString();
    }
    session.preferences.setValue(u"cdProviderText"_s, u"IOBDServices/6"_s);
    EXPECT_TRUE(CDExtractSCSIProviderHelper::isKnownProvider(u"IOBDServices/6"_s));
    EXPECT_FALSE(CDExtractSCSIProviderHelper::isKnownProvider(u"IOBDServices/7"_s));
}

} // namespace kruv::test
