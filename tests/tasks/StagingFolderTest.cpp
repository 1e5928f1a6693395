// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagingFolder.h"

#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QSysInfo>

#include <gtest/gtest.h>
#include <thread>
#include <utime.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

class StagingFolderTest : public testing::Test
{
protected:
    /// Leaves all that a job may: an output, a tool's folder, a name that is no text.
    QString useAndLeave(const QString &target)
    {
        const StagingFolder staging(target);
        folder.write(staging.pathFor(u"half.flac"_s).mid(folder.path().size() + 1), "half");
        QDir(staging.path()).mkpath(u"of the tool/deep"_s);
        const QByteArray noText = QFile::encodeName(staging.path()) + "/caf\xE9";
        if (FILE *file = fopen(noText.constData(), "w")) {
            fclose(file);
        }
        return staging.path();
    }

    TemporaryFolder folder;
};

TEST_F(StagingFolderTest, GoesWithTheJobOrServesTheNextOneEmpty)
{
    useAndLeave(folder.path());
    EXPECT_EQ(namesIn(folder.path()), QStringList());
    {
        const StagingReuse busy;
        const QString first = useAndLeave(folder.path());
        EXPECT_EQ(namesIn(first), QStringList{u"lock"_s});
        const StagingFolder second(folder.path());
        const StagingFolder besides(folder.path());
        EXPECT_EQ(second.path(), first);
        EXPECT_NE(besides.path(), first) << "a job never shares its folder";
    }
    EXPECT_EQ(namesIn(folder.path()), QStringList());
}

TEST_F(StagingFolderTest, OneThatWasMovedAwayIsNotWaitedFor)
{
    const StagingReuse busy;
    const QString album = folder.file(u"album"_s);
    QDir().mkdir(album);
    useAndLeave(album);
    QDir().rename(album, folder.file(u"elsewhere"_s));
    QDir().mkdir(album);
    const StagingFolder next(album);
    EXPECT_TRUE(QFile::exists(next.pathFor(u"lock"_s)));
}

TEST_F(StagingFolderTest, SweepsOnlyWhatIsItsOwn)
{
    const QString gone = folder.makeFolder(u".kruv-abcdefgh"_s);
    folder.makeFolder(u".kruv-emptyish"_s); // by a process that was killed at once
    const QString music = folder.makeFolder(u".kruv-mymusics"_s);
    const QString locks = folder.makeFolder(u".kruv-mykeylox"_s);
    const QStringList files{
        folder.write(u".kruv-abcdefgh/lock"_s, QSysInfo::machineHostName().toUtf8() + "\nboot\n1\n1\n"),
        folder.write(u".kruv-abcdefgh/half.flac"_s, "half"),
        folder.write(u".kruv-mymusics/song.flac"_s, "song"),
        folder.write(u".kruv-mykeylox/lock"_s, "a picture of a lock")};
    const utimbuf longAgo{1, 1};
    for (const QString &path : files + QStringList{gone, music, locks}) {
        utime(QFile::encodeName(path).constData(), &longAgo);
    }
    StagingFolder::sweep(folder.path());
    EXPECT_EQ(namesIn(folder.path()), (QStringList{u".kruv-mykeylox"_s, u".kruv-mymusics"_s}));
}

TEST_F(StagingFolderTest, IsMadeWhileOthersSweep)
{
    std::jthread sweeper([this](const std::stop_token &stop) {
        while (!stop.stop_requested()) {
            StagingFolder::sweep(folder.path());
        }
    });
    for (int index = 0; index < 300; ++index) {
        const StagingFolder made(folder.path());
        EXPECT_FALSE(readFile(made.pathFor(u"lock"_s)).isEmpty());
    }
}

TEST_F(StagingFolderTest, FewWaitHoweverManyFoldersThereAre)
{
    const StagingReuse busy;
    int left = 0;
    for (int album = 0; album < 40; ++album) {
        const QString target = folder.file(QString::number(album));
        QDir().mkdir(target);
        useAndLeave(target);
    }
    for (int album = 0; album < 40; ++album) {
        left += static_cast<int>(namesIn(folder.file(QString::number(album))).size());
    }
    EXPECT_LE(left, 8);
}

} // namespace
