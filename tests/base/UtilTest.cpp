// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Util.h"

#include "base/Preferences.h"
#include "platform/SessionId.h"
#include "support/EnvironmentVariable.h"
#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>

using namespace kruv;
using namespace kruv::test;

TEST(TemporaryNames, AreNewEmptyFilesOfTheSession)
{
    const TemporaryFolder folder;
    const QString inFolder = folder.makeFolder(QStringLiteral("100%1 XXXXXXXX"));
    const QRegularExpression name(
        QStringLiteral("^Kruv-%1-[A-Za-z0-9]{8}\\.tar\\.gz$").arg(sessionId(), 8, 16, QLatin1Char('0')));
    QSet<QString> paths;
    for (int i = 0; i < 50; ++i) {
        const QFileInfo made(Util::generateTempFileName(inFolder, QStringLiteral("tar.gz")));
        EXPECT_EQ(made.path(), inFolder);
        EXPECT_TRUE(name.match(made.fileName()).hasMatch()) << made.fileName().toStdString();
        EXPECT_TRUE(made.exists());
        EXPECT_EQ(made.size(), 0);
        paths.insert(made.filePath());
    }
    EXPECT_EQ(paths.size(), 50);
}

TEST(TemporaryNames, AreUniqueAcrossThreads)
{
    const TemporaryFolder folder;
    std::mutex lock;
    QSet<QString> paths;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int made = 0; made < 50; ++made) {
                const QString path = Util::generateTempFileName(folder.path(), QStringLiteral("wav"));
                const std::lock_guard guard(lock);
                paths.insert(path);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(paths.size(), 200);
}

class DeletedFiles : public testing::Test
{
protected:
    /// What lies in the trash.
    QStringList trash() const
    {
        return QDir(folder.file(QStringLiteral("data/Trash/files"))).entryList(QDir::Files);
    }

    TemporaryFolder folder;
    EnvironmentVariable dataHome{"XDG_DATA_HOME", folder.makeFolder(QStringLiteral("data")).toUtf8()};
    Preferences preferences{folder.file(QStringLiteral("kruv.conf"))};
    QString original = folder.write(QStringLiteral("a 100%1\n.wav"), "audio");
};

TEST_F(DeletedFiles, AreGoneByDefault)
{
    Util::deleteFile(original, preferences);
    EXPECT_FALSE(QFile::exists(original));
    EXPECT_TRUE(trash().isEmpty());
}

TEST_F(DeletedFiles, LieInTheTrashWhenThePersonWantsThat)
{
    for (const int wish : {1, -1}) {
        preferences.setValue(QStringLiteral("trashOrDelete"), wish);
        writeFile(original, "audio");
        Util::deleteFile(original, preferences);
        EXPECT_FALSE(QFile::exists(original));
    }
    ASSERT_EQ(trash().size(), 2) << "one name twice keeps both";
    EXPECT_EQ(readFile(folder.file(QStringLiteral("data/Trash/files/") + trash()[0])), QByteArray("audio"));
}

TEST_F(DeletedFiles, AreNeverFolders)
{
    const QString album = folder.makeFolder(QStringLiteral("album"));
    writeFile(album + QStringLiteral("/a.wav"), "audio");
    EXPECT_FALSE(Util::deleteFile(album, preferences)) << "it is still there, and that is told";
    EXPECT_TRUE(Util::deleteFile(folder.file(QStringLiteral("missing")), preferences));
    EXPECT_TRUE(QFile::exists(album + QStringLiteral("/a.wav")));
}
