// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/TextFile.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/QtPrinters.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

TEST(WholeFile, ReplacesAFileWholeOrLeavesIt)
{
    const TemporaryFolder folder;
    const QString list = folder.write(u"list.md5"_s, "the old list\n");
    {
        const FullDisk full(0);
        for (const qsizetype length : {5, 100'000}) { // the short text fails no sooner than in the last flush
            EXPECT_NE(TextFile::write(list, QString(length, u'x')), QString());
        }
    }
    {
        const FullDisk nearlyFull(50'000);
        EXPECT_EQ(TextFile::write(list, QString(100'000, u'x')), u"File too large"_s) << "the reason";
    }
    EXPECT_EQ(readFile(list), "the old list\n");
    EXPECT_NE(TextFile::write(folder.file(u"nowhere/list.md5"_s), u"x"_s), QString());

    const mode_t mask = umask(0027);
    EXPECT_EQ(TextFile::write(list, u"ä\n"_s), QString());
    EXPECT_EQ(TextFile::write(folder.file(u"new.md5"_s), u"x"_s), QString());
    umask(mask);
    EXPECT_EQ(readFile(list), "\xc3\xa4\n");
    EXPECT_EQ(QFile::permissions(folder.file(u"new.md5"_s)) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
}

} // namespace kruv::test
