// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/TabRun.h"
#include "checksums/VerifyMD5Task.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"

#include <QFile>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

const QByteArray ofAbc = "900150983cd24fb0d6963f7d28e17f72";

/// Lists that nobody wrote, or somebody wrote to do harm. Each has one true line for each of its own.
TEST(VerifyList, AnswersEveryLineTruly)
{
    struct Row
    {
        const char *what;
        QByteArray list;
        QString report;
    };
    const Row rows[] = {
        {"empty", "", {}},
        {"comments only", "# one\n; two\n\n", {}},
        {"as written here", ofAbc + " *abc.wav\n", u"abc.wav : OK\n"_s},
        {"Windows, byte-order mark", "\xef\xbb\xbf" + ofAbc + " *abc.wav\r\n", u"abc.wav : OK\n"_s},
        {"Latin-1", ofAbc + " *l\xe9t.wav\n", u"lét.wav : OK\n"_s},
        {"Latin-1 on the disk too", ofAbc + " *r\xe9mi.wav\n", u"rémi.wav : OK\n"_s},
        {"upper case", ofAbc.toUpper() + " *abc.wav\n", u"abc.wav : FAILED\n"_s},
        {"two blanks", ofAbc + "  abc.wav\n",
         QString::fromLatin1(ofAbc) + u"  abc.wav : Invalid checksum format\n"_s},
        {"climbs out", ofAbc + " *../../../../../../../../etc/passwd\n", u"passwd : FAILED\n"_s},
        {"climbs to a sibling", ofAbc + " *../album/abc.wav\n", u"abc.wav : OK\n"_s},
        {"a device", ofAbc + " *../../../../../../../../dev/zero\n",
         u"zero : FAILED (not a regular file)\n"_s},
        {"a pipe", ofAbc + " *pipe.wav\n", u"pipe.wav : FAILED (not a regular file)\n"_s},
        {"a folder", ofAbc + " *.\n", u". : FAILED (not a regular file)\n"_s},
        {"the separator in the name", ofAbc + " *x *abc.wav\n", u"x : FAILED\n"_s},
        {"no name", ofAbc + " *\n", u" : FAILED\n"_s},
        {"missing", ofAbc + " *none.wav", u"none.wav : FAILED\n"_s},
    };
    TabRun kruv;
    const QString folder = kruv.folder.makeFolder(u"album"_s);
    kruv.folder.write(u"album/abc.wav"_s, "abc");
    kruv.folder.write(u"album/lét.wav"_s, "abc");
    const QByteArray encoded = QFile::encodeName(folder);
    FILE *latin = std::fopen((encoded + "/r\xe9mi.wav").constData(), "w");
    ASSERT_NE(latin, nullptr);
    std::fputs("abc", latin);
    std::fclose(latin);
    ASSERT_EQ(mkfifo((encoded + "/pipe.wav").constData(), 0600), 0);
    for (const Row &row : rows) {
        const QString list = kruv.folder.write(u"album/l.md5"_s, row.list);
        EXPECT_EQ(kruv.verifyLists({list}), u"Verify MD5: l.md5\n"_s + row.report + u'\n') << row.what;
    }
    std::remove((encoded + "/r\xe9mi.wav").constData()); // the folder can't name it
}

TEST(VerifyList, SurvivesRubbishOfEveryKind)
{
    QByteArray rubbish;
    std::uint32_t state = 12345;
    for (int index = 0; index < 100000; ++index) {
        state = state * 1664525U + 1013904223U;
        rubbish += static_cast<char>(state >> 24U);
    }
    TabRun kruv;
    // A few lines only for those that start a tool for each.
    const QByteArray few = rubbish.left(1000) + "\n" + QByteArray(100000, 'x') + "\n" +
                           QByteArray(":\0:\n", 4) + "  [shntool]  \n" + QByteArray(10, '\0') + "\n..\n";
    const std::pair<const char *, QByteArray> lists[] = {{"l.md5", rubbish}, {"l.st5", few}, {"l.ffp", few}};
    for (const auto &[name, bytes] : lists) {
        const QString list = kruv.folder.write(QString::fromLatin1(name), bytes);
        const QString report = kruv.verifyLists({list});
        EXPECT_TRUE(report.startsWith(u"Verify "_s)) << name;
        EXPECT_FALSE(report.contains(u" : OK"_s)) << name;
        EXPECT_GT(report.count(u" : "_s), 3) << name;
    }
}

TEST(VerifyList, UnreadableListsShowTheirFirstLineAndFail)
{
    Engine engine;
    const auto results = std::make_shared<KruvTaskResults>();
    const auto verify = [&](const QString &list) {
        auto job = std::make_shared<VerifyMD5Task>(&engine.queue, list, results);
        results->addTaskInSet(*job);
        engine.queue.addTask(job);
        EXPECT_TRUE(engine.runToEnd());
        return job;
    };
    const auto missing = verify(engine.folder.file(u"none.md5"_s));
    EXPECT_TRUE(missing->error());
    EXPECT_FALSE(missing->listProblem().isEmpty());
    EXPECT_EQ(results->results(*missing), u"Verify MD5: none.md5\n"_s);
    EXPECT_TRUE(verify(engine.folder.makeFolder(u"folder.md5"_s))->error());
}

TEST(VerifyList, CountsWhatBecameOfEachLine)
{
    Engine engine;
    engine.folder.write(u"abc.wav"_s, "abc");
    QByteArray list;
    constexpr int lines = 50000;
    for (int index = 0; index < lines; ++index) {
        list += index % 3 == 0   ? ofAbc + " *abc.wav\n"
                : index % 3 == 1 ? "0" + ofAbc + " *abc.wav\n"
                                 : ofAbc + " *none.wav\n";
    }
    const auto job = std::make_shared<VerifyMD5Task>(&engine.queue, engine.folder.write(u"l.md5"_s, list),
                                                     std::make_shared<KruvTaskResults>());
    job->results()->addTaskInSet(*job);
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    ASSERT_EQ(job->entries().size(), lines);
    const VerifyListTask::Outcome cycle[] = {
        VerifyListTask::Outcome::Matched, VerifyListTask::Outcome::Failed, VerifyListTask::Outcome::Missing};
    for (std::size_t index = 0; index < lines; ++index) {
        ASSERT_EQ(job->entries()[index].outcome, cycle[index % 3]) << index;
    }
    const QStringList report = engine.userInterface.resultsWindows.at(0).text.split(u'\n');
    EXPECT_EQ(report.value(1), u"abc.wav : OK"_s);
    EXPECT_EQ(report.value(2), u"abc.wav : FAILED"_s);
    EXPECT_EQ(report.value(lines), u"abc.wav : FAILED"_s) << "the last line, in its place";
}

} // namespace
