// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputWatch.h"

#include "support/Files.h"
#include "support/Wait.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

class OutputWatchTest : public testing::Test
{
protected:
    /// The file system's clock has steps; the next write of `path` after this carries another time.
    void letFileTimePass()
    {
        const OutputWatch clock(folder.write(u"clock"_s, "x"));
        ASSERT_TRUE(waitUntil([&] {
            folder.write(u"clock"_s, "x");
            return clock.written();
        }));
    }

    TemporaryFolder folder;
    QString output = folder.file(u"output.flac"_s);
};

TEST_F(OutputWatchTest, SeesANewFile)
{
    const OutputWatch watch(output);
    EXPECT_FALSE(watch.written());
    writeFile(output, {});
    EXPECT_FALSE(watch.written()) << "an empty output is none";
    writeFile(output, "audio");
    EXPECT_TRUE(watch.written());
    QFile::remove(output);
    EXPECT_FALSE(watch.written());
}

TEST_F(OutputWatchTest, TellsARewrittenFileFromAnUntouchedOne)
{
    writeFile(output, "audio");
    letFileTimePass();
    const OutputWatch watch(output);
    EXPECT_FALSE(watch.written());
    static_cast<void>(readFile(output));
    EXPECT_FALSE(watch.written()) << "reading is not writing";
    letFileTimePass();
    writeFile(output, "oidua"); // the same size
    EXPECT_TRUE(watch.written());
}

TEST_F(OutputWatchTest, SeesAFileRenamedIntoPlace)
{
    writeFile(output, "audio");
    const QString fresh = folder.write(u"fresh"_s, "audio");
    const OutputWatch watch(output);
    QFile::remove(output);
    ASSERT_TRUE(QFile::rename(fresh, output));
    EXPECT_TRUE(watch.written());
}

TEST_F(OutputWatchTest, TakesNothingElseForAnOutput)
{
    const OutputWatch watch(output);
    folder.makeFolder(u"output.flac"_s);
    EXPECT_FALSE(watch.written());
    EXPECT_FALSE(OutputWatch().written());
    EXPECT_FALSE(OutputWatch(u"/dev/null"_s).written());
    const QString dangling = folder.file(u"dangling"_s);
    ASSERT_TRUE(QFile::link(folder.file(u"nothing"_s), dangling));
    EXPECT_FALSE(OutputWatch(dangling).written());
}

TEST_F(OutputWatchTest, KnowsOneFileByManyNames)
{
    writeFile(output, "audio");
    const QString link = folder.file(u"link"_s);
    ASSERT_TRUE(QFile::link(output, link));
    const QString detour = folder.path() + u"/./x/../output.flac"_s;
    folder.makeFolder(u"x"_s);
    const QString copy = folder.write(u"copy"_s, "audio");
    EXPECT_TRUE(OutputWatch::isSameFile(output, link));
    EXPECT_TRUE(OutputWatch::isSameFile(output, detour));
    EXPECT_FALSE(OutputWatch::isSameFile(output, copy));
    EXPECT_FALSE(OutputWatch::isSameFile(output, folder.file(u"nothing"_s)));
    EXPECT_FALSE(OutputWatch::isSameFile(folder.file(u"a"_s), folder.file(u"a"_s))) << "two names of nothing";
}
