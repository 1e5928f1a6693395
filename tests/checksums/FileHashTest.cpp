// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/FileHash.h"

#include "support/Files.h"
#include "support/QtPrinters.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

TEST(FileHash, KnowsThePublishedDigestsOfAbc)
{
    const TemporaryFolder folder;
    const QString path = folder.write(u"abc"_s, "abc");
    EXPECT_EQ(FileHash::md5HashOfFileAtPath(path), u"900150983cd24fb0d6963f7d28e17f72"_s);
    EXPECT_EQ(FileHash::sha1HashOfFileAtPath(path), u"a9993e364706816aba3e25717850c26c9cd0d89d"_s);
    EXPECT_TRUE(FileHash::sha512HashOfFileAtPath(path).startsWith(u"ddaf35a193617abacc417349ae204131"_s));
    EXPECT_EQ(FileHash::md5HashOfFileAtPath(folder.write(u"empty"_s, "")),
              u"d41d8cd98f00b204e9800998ecf8427e"_s);
}

TEST(FileHash, ReadsOnlyWhatHasAnEnd)
{
    const TemporaryFolder folder;
    const QString pipe = folder.file(u"pipe"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    struct Row
    {
        QString path;
        FileHash::Problem problem;
    };
    const Row rows[] = {
        {pipe, FileHash::Problem::NotAFile},
        {u"/dev/zero"_s, FileHash::Problem::NotAFile},
        {folder.path(), FileHash::Problem::NotAFile},
        {folder.file(u"none"_s), FileHash::Problem::Missing},
        {folder.file(QString(300, u'x')), FileHash::Problem::Missing},
    };
    for (const Row &row : rows) {
        const auto result = FileHash::hashOfFileAtPath(QFile::encodeName(row.path), FileHash::Algorithm::MD5);
        EXPECT_EQ(result.problem, row.problem) << row.path.toStdString();
        EXPECT_TRUE(result.digest.isNull());
        EXPECT_FALSE(result.message.isEmpty());
    }
}

TEST(FileHash, StopsWithinAFileThatWouldTakeMinutes)
{
    const TemporaryFolder folder;
    const QString path = folder.write(u"sparse"_s, "");
    constexpr qint64 fiftyGigabytes = 50LL * 1000 * 1000 * 1000;
    ASSERT_TRUE(QFile::resize(path, fiftyGigabytes));
    int pieces = 0;
    double lastShare = 0.0;
    const auto result =
        FileHash::hashOfFileAtPath(QFile::encodeName(path), FileHash::Algorithm::MD5, [&](double share) {
            EXPECT_GT(share, lastShare);
            lastShare = share;
            return ++pieces < 10;
        });
    EXPECT_EQ(result.problem, FileHash::Problem::Stopped);
    EXPECT_EQ(pieces, 10);
}

} // namespace
