// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/Util.h"

#include "base/FoldedNames.h"
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
    EXPECT_EQ(Util::deleteFile(original, preferences), QString());
    EXPECT_FALSE(QFile::exists(original));
    EXPECT_TRUE(trash().isEmpty());
}

TEST_F(DeletedFiles, LieInTheTrashWhenThePersonWantsThat)
{
    for (const int wish : {1, -1}) {
        preferences.setValue(QStringLiteral("trashOrDelete"), wish);
        writeFile(original, "audio");
        EXPECT_EQ(Util::deleteFile(original, preferences), QString());
        EXPECT_FALSE(QFile::exists(original));
    }
    ASSERT_EQ(trash().size(), 2) << "one name twice keeps both";
    EXPECT_EQ(readFile(folder.file(QStringLiteral("data/Trash/files/") + trash()[0])), QByteArray("audio"));
}

TEST_F(DeletedFiles, StayWhereThereIsNoTrash)
{
    preferences.setValue(QStringLiteral("trashOrDelete"), 1);
    const QByteArray aFile = folder.write(QStringLiteral("file"), "x").toUtf8();
    const EnvironmentVariable home("HOME", "");
    const QString here = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(folder.makeFolder(QStringLiteral("here"))));
    for (const QByteArray &noFolder : {QByteArray(), QByteArray("relative"), aFile, aFile + "/below"}) {
        const EnvironmentVariable elsewhere("XDG_DATA_HOME", noFolder);
        EXPECT_TRUE(Util::deleteFile(original, preferences).contains(QStringLiteral("trash")))
            << noFolder.constData();
        EXPECT_EQ(readFile(original), QByteArray("audio"));
    }
    EXPECT_TRUE(QDir().isEmpty()) << "nothing is moved into the current folder";
    {
        folder.makeFolder(QStringLiteral("locked"));
        folder.makeFolder(QStringLiteral("locked/Trash"));
        folder.write(QStringLiteral("locked/Trash/info"), "a file in the place of a folder");
        const EnvironmentVariable locked("XDG_DATA_HOME", folder.file(QStringLiteral("locked")).toUtf8());
        EXPECT_NE(Util::deleteFile(original, preferences), QString());
        EXPECT_EQ(readFile(original), QByteArray("audio"));
    }
    QDir::setCurrent(here);
    const EnvironmentVariable fresh("XDG_DATA_HOME", folder.file(QStringLiteral("a/new/home")).toUtf8());
    EXPECT_EQ(Util::deleteFile(original, preferences), QString());
    EXPECT_TRUE(QFile::exists(
        folder.file(QStringLiteral("a/new/home/Trash/files/") + QFileInfo(original).fileName())));
}

TEST_F(DeletedFiles, AreNeverFolders)
{
    const QString album = folder.makeFolder(QStringLiteral("album"));
    writeFile(album + QStringLiteral("/a.wav"), "audio");
    EXPECT_NE(Util::deleteFile(album, preferences), QString()) << "it is still there, and that is told";
    EXPECT_EQ(Util::deleteFile(folder.file(QStringLiteral("missing")), preferences), QString());
    EXPECT_TRUE(QFile::exists(album + QStringLiteral("/a.wav")));
}

TEST(FoldedNames, AreAlikeToAnyFileSystemThatFolds)
{
    const auto key = [](QStringView name) { return FoldedNames::key(name.toString()); };
    for (const auto &[one, other] : {std::pair(u"Track01.wav", u"tRACK01.WAV"),
                                     {u"Caf\u00e9", u"CAFE\u0301"},
                                     {u"stra\u00dfe", u"STRASSE"},
                                     {u"\u03c3\u03b1\u03c2", u"\u03a3\u0391\u03a3"},
                                     {u"\ufb00", u"FF"},
                                     {u"a\u200bb", u"AB"},
                                     {u"end...", u"END"},
                                     {u"k.wav", u"\u212a.wav"}}) {
        EXPECT_EQ(key(one), key(other));
    }
    EXPECT_NE(key(u"a"), key(u"\u00e4"));
    const TemporaryFolder folder;
    EXPECT_FALSE(FoldedNames::areOne(folder.path(), QStringLiteral("a"), QStringLiteral("A")))
        << "no file system for tests folds";
    EXPECT_TRUE(QDir(folder.path()).isEmpty());
    EXPECT_FALSE(
        FoldedNames::areOne(folder.file(QStringLiteral("new/er")), QStringLiteral("a"), QStringLiteral("A")))
        << "as the folder above it";
    EXPECT_TRUE(
        FoldedNames::areOne(QStringLiteral("/proc/nowhere"), QStringLiteral("a"), QStringLiteral("A")))
        << "nothing can be tried";
}
