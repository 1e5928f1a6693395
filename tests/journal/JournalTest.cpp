// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/Journal.h"

#include "journal/Database.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "journal/JournalSchema.h"
#include "journal/Transaction.h"
#include "support/EnvironmentVariable.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/QtPrinters.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>

#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class JournalTest : public testing::Test
{
protected:
    std::unique_ptr<Journal> open()
    {
        return std::make_unique<Journal>(path, [this](const QString &sentence) { said << sentence; });
    }
    /// One run of one job that was done, with its receipt.
    static void record(Journal &journal, const QString &source = u"/music/a.wav"_s)
    {
        const auto run = journal.addRun({.command = u"encode"_s, .arguments = {u"encode"_s, u"a b"_s}});
        const QString output = source.chopped(3) + u"flac"_s;
        const auto entry = journal.addEntries(run, {{source, output, EntryRecord::Action::Make}});
        journal.setRunning(entry);
        journal.end(entry, {.receipt = Receipt{.sources = {{source, {1, 2, 3}, Receipt::Fate::Trashed}},
                                               .outputs = {{output, {4, 5, 6}}},
                                               .proof = u"same-audio"_s,
                                               .digest = u"0123456789abcdef0123456789abcdef"_s,
                                               .decoder = u"ffmpeg/flac"_s,
                                               .seconds = 1.5}});
        journal.endRun(run);
    }
    std::vector<HistoryRun> runs() const
    {
        std::vector<HistoryRun> found;
        History(path).forEachRun([&found](const HistoryRun &run) { found.push_back(run); });
        return found;
    }
    std::vector<HistoryEntry> entries(std::int64_t run) const
    {
        std::vector<HistoryEntry> found;
        History(path).forEachEntryOf(run, [&found](const HistoryEntry &entry) { found.push_back(entry); });
        return found;
    }
    std::vector<HistoryEntry> find(History::Question::About about, const QString &text) const
    {
        std::vector<HistoryEntry> found;
        History(path).find({about, text}, [&found](const HistoryEntry &entry) { found.push_back(entry); });
        return found;
    }
    Database database() const
    {
        return {path, Database::Mode::Write, [] { return true; }};
    }
    QStringList filesBeside() const
    {
        return QDir(QFileInfo(path).path()).entryList(QDir::Files, QDir::Name);
    }

    TemporaryFolder folder;
    QString path = folder.path() + u"/state/kruv/journal.db"_s;
    QStringList said;
};

} // namespace

TEST_F(JournalTest, TellsWhatWasRecorded)
{
    const QString hostile = u"/music/it's \"100%\"\n_ø.wav"_s;
    {
        const auto journal = open();
        record(*journal, hostile);
        const auto run = journal->addRun({.command = u"decode"_s, .folder = u"/home"_s, .process = u"me"_s});
        const auto first =
            journal->addEntries(run, {{u"/x/1.flac"_s, u"/x/1.wav"_s, EntryRecord::Action::Replace},
                                      {u"/x/2.flac"_s, u"/x/2.wav"_s, EntryRecord::Action::Make},
                                      {u"/x/3.flac"_s, {}, EntryRecord::Action::Work}});
        journal->end(first, {EntryEnd::State::Failed, u"no room"_s});
        journal->setRunning(first + 1);
    }
    EXPECT_EQ(said, QStringList());
    const auto all = runs();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].command, u"decode"_s); // the latest first
    EXPECT_EQ(all[0].process, u"me"_s);
    EXPECT_FALSE(all[0].ended);
    EXPECT_EQ(all[0].failed, 1);
    EXPECT_EQ(all[0].all, 3);
    EXPECT_EQ(all[1].arguments, QStringList({u"encode"_s, u"a b"_s}));
    EXPECT_TRUE(all[1].ended);
    EXPECT_EQ(all[1].done, 1);

    const auto decoded = entries(all[0].id);
    ASSERT_EQ(decoded.size(), 3U);
    const char *const expected[][2] = {{"replace", "error"}, {"make", "running"}, {"work", "waiting"}};
    for (std::size_t index = 0; index < decoded.size(); ++index) {
        EXPECT_EQ(decoded[index].action, QLatin1StringView(expected[index][0]));
        EXPECT_EQ(decoded[index].state, QLatin1StringView(expected[index][1]));
        EXPECT_FALSE(decoded[index].hasReceipt);
    }
    EXPECT_EQ(decoded[0].reason, u"no room"_s);

    const auto encoded = entries(all[1].id);
    ASSERT_EQ(encoded.size(), 1U);
    EXPECT_EQ(encoded[0].source, hostile);
    EXPECT_EQ(encoded[0].state, u"complete"_s);
    EXPECT_EQ(encoded[0].seconds, 1.5);
    ASSERT_EQ(encoded[0].files.size(), 2U);
    EXPECT_EQ(encoded[0].files[0].fate, u"trashed"_s);
    EXPECT_EQ(encoded[0].files[1].stamp, (FileStamp{4, 5, 6}));
}

TEST_F(JournalTest, FindsWhatBecameOfAFile)
{
    {
        const auto journal = open();
        record(*journal, u"/music/Ärger 100%/one.wav"_s);
        record(*journal, u"/music/Ärger 100%/one more.wav"_s);
        record(*journal, u"/music/Ärger 1000/one.wav"_s);
    }
    using About = History::Question::About;
    struct Case
    {
        About about;
        QString text;
        std::size_t found;
    };
    for (const Case &each : std::initializer_list<Case>{
             {About::Text, u"ärger 100%"_s, 2},
             {About::Text, u"_"_s, 0}, // stands for itself
             {About::Path, u"/music/Ärger 100%/one.flac"_s, 1},
             {About::Path, u"/music/Ärger 100%/one"_s, 0},
             {About::Path, u"/music/Ärger 100%"_s, 2},
             {About::Path, QString(), 3}, // the root folder
             {About::Digest, u"0123456789abcdef0123456789abcdef"_s, 3},
             {About::Digest, u"ffffffffffffffffffffffffffffffff"_s, 0},
         }) {
        EXPECT_EQ(find(each.about, each.text).size(), each.found) << each.text.toStdString();
    }
}

TEST_F(JournalTest, TakesTwentyThousandJobsInOneGo)
{
    constexpr int count = 20'000;
    const auto journal = open();
    std::vector<EntryRecord> records(count);
    for (int index = 0; index < count; ++index) {
        records[static_cast<std::size_t>(index)] = {u"/music/%1.wav"_s.arg(index),
                                                    u"/music/%1.flac"_s.arg(index)};
    }
    const auto run = journal->addRun({.command = u"encode"_s});
    QElapsedTimer clock;
    clock.start();
    auto entry = journal->addEntries(run, std::move(records));
    journal->waitUntilWritten();
    constexpr int longestWait = 1000; // milliseconds, after which the jobs start all the same
    EXPECT_TRUE(clock.hasExpired(longestWait) || entries(1).size() == count)
        << "in the file when the first job may start";
    for (int index = 0; index < count; ++index) {
        journal->setRunning(entry);
        journal->end(entry++, {index % 100 == 0 ? EntryEnd::State::Failed : EntryEnd::State::Done});
    }
    journal->endRun(run);
    journal->finish();
    const auto all = runs();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].done, count - count / 100);
    EXPECT_EQ(all[0].failed, count / 100);
    const auto list = entries(1);
    EXPECT_EQ(list[100].source, u"/music/100.wav"_s);
    EXPECT_EQ(list[100].state, u"error"_s);
}

TEST_F(JournalTest, ForgetsOldRunsButNoReceipts)
{
    record(*open());
    constexpr qint64 day = qint64{24} * 60 * 60 * 1000;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    {
        Database file = database();
        Transaction transaction(file);
        file.prepare("UPDATE runs SET started = ?").with(now - 366 * day).run();
        Statement add =
            file.prepare("INSERT INTO runs (started, command, arguments, folder, process, version)"
                         " VALUES (?, '', '[]', '', '', '')");
        for (int index = 0; index < 1100; ++index) {
            add.with(now - 2 * day).run();
        }
        transaction.commit();
    }
    record(*open());
    EXPECT_EQ(runs().size(), 1000U);
    const auto found = find(History::Question::About::Text, u"a.wav"_s);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].command, QString()); // of which nobody knows any more
    EXPECT_EQ(found[1].output, u"/music/a.flac"_s);
    EXPECT_EQ(found[1].files.at(0).fate, u"trashed"_s);
    Database file = database();
    EXPECT_EQ(file.number("PRAGMA freelist_count"), 0) << "the room was given back";
}

TEST_F(JournalTest, BringsWhatAnOlderVersionWroteUpToDate)
{
    const auto makeOlder = [this] {
        database().execute("DROP INDEX receipt_files_by_path; DROP TABLE ways_back;"
                           "ALTER TABLE runs DROP COLUMN plan; ALTER TABLE runs DROP COLUMN forgotten;"
                           "ALTER TABLE runs DROP COLUMN undoing;"
                           "ALTER TABLE entries DROP COLUMN keeps; PRAGMA user_version = 1");
    };
    record(*open());
    makeOlder();
    EXPECT_EQ(runs().size(), 1U); // by reading
    makeOlder();
    record(*open());
    EXPECT_EQ(runs().size(), 2U);
    EXPECT_EQ(said, QStringList());
}

TEST_F(JournalTest, ReadsWhatAKillLeftHalfMade)
{
    const QString half = folder.path() + u"/half.db"_s;
    {
        Database making(half, Database::Mode::Write, [] { return true; });
        making.execute("PRAGMA cache_size = 1; BEGIN; CREATE TABLE a (b);"
                       "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 9999)"
                       "INSERT INTO a SELECT hex(randomblob(200)) FROM n");
        QDir().mkpath(QFileInfo(path).path());
        ASSERT_TRUE(QFile::copy(half, path));
        ASSERT_TRUE(QFile::copy(half + u"-journal"_s, path + u"-journal"_s));
    }
    EXPECT_NO_THROW(EXPECT_EQ(runs().size(), 0U));
    record(*open());
    EXPECT_EQ(runs().size(), 1U);
    EXPECT_EQ(said, QStringList());
}

TEST_F(JournalTest, IsNeverInTheWay)
{
    struct Case
    {
        const char *what;
        std::function<void()> damage;
        const char *said;
        bool isKept; // as it was
    };
    const auto version = [this](int number) {
        record(*open());
        database().execute(("PRAGMA user_version = " + std::to_string(number)).c_str());
    };
    for (const Case &each : std::initializer_list<Case>{
             {"no folder can be made", [this] { folder.write(u"state"_s, "a file"); }, "can't be written",
              true},
             {"a folder in its place", [this] { folder.makeFolder(u"state/kruv/journal.db"_s); },
              "can't be written", true},
             {"a newer version", [&] { version(JournalSchema::version() + 1); }, "newer version", true},
             {"another program's",
              [this] {
                  folder.makeFolder(u"state/kruv"_s);
                  database().execute("CREATE TABLE theirs (id)");
              },
              "another program", true},
             {"no database", [this] { folder.write(u"state/kruv/journal.db"_s, QByteArray(9000, 'x')); },
              "damaged", false},
             {"cut off",
              [this] {
                  record(*open());
                  QFile::resize(path, 5000);
              },
              "damaged", false},
         }) {
        SCOPED_TRACE(each.what);
        QDir(folder.path() + u"/state"_s).removeRecursively();
        QFile::remove(folder.path() + u"/state"_s);
        folder.makeFolder(u"state/kruv"_s);
        if (each.isKept) {
            QDir(folder.path() + u"/state"_s).removeRecursively();
        }
        each.damage();
        said.clear();
        const QStringList before = filesBeside();
        record(*open());
        ASSERT_EQ(said.size(), 1);
        EXPECT_TRUE(said[0].contains(QLatin1StringView(each.said))) << said[0].toStdString();
        EXPECT_EQ(filesBeside() == before, each.isKept);
        if (!each.isKept) {
            said.clear();
            record(*open());
            EXPECT_EQ(said, QStringList());
            EXPECT_GE(runs().size(), 1U);
        }
    }
}

TEST_F(JournalTest, SaysOnceThatTheDiskIsFull)
{
    const auto journal = open();
    record(*journal);
    journal->waitUntilWritten();
    const FullDisk full(60'000);
    for (int index = 0; index < 2000; ++index) {
        record(*journal);
    }
    journal->finish();
    EXPECT_EQ(said.size(), 1);
    EXPECT_GE(runs().size(), 1U); // what was there is still read
}

TEST_F(JournalTest, GoesOnWithoutAFileThatAnotherProcessHolds)
{
    record(*open());
    Database other = database();
    const Transaction held(other);
    QElapsedTimer clock;
    clock.start();
    const auto journal = open();
    for (int index = 0; index < 100; ++index) {
        record(*journal);
    }
    EXPECT_LT(clock.elapsed(), 3000) << "one wait, not one for each";
    EXPECT_EQ(said, QStringList());
    journal->finish();
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].contains(u"busy"_s));
}

TEST_F(JournalTest, TakesSeveralProcessesAtOnce)
{
    constexpr int processes = 6;
    constexpr int runsOfEach = 40;
    std::vector<pid_t> children;
    for (int index = 0; index < processes; ++index) {
        const pid_t child = fork();
        if (child == 0) {
            {
                const auto journal = open();
                for (int run = 0; run < runsOfEach; ++run) {
                    record(*journal);
                }
            }
            _exit(said.isEmpty() ? 0 : 1);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(runs().size(), std::size_t{processes * runsOfEach});
    EXPECT_EQ(find(History::Question::About::Text, u"a.flac"_s).size(), std::size_t{processes * runsOfEach});
}

TEST_F(JournalTest, OutlivesItsProcess)
{
    const pid_t child = fork();
    if (child == 0) {
        const auto journal = open();
        record(*journal);
        const auto run = journal->addRun({.command = u"decode"_s});
        journal->addEntries(run, {{u"/x.flac"_s, u"/x.wav"_s}});
        journal->waitUntilWritten();
        kill(getpid(), SIGKILL);
    }
    waitpid(child, nullptr, 0);
    EXPECT_EQ(runs().size(), 2U);
    EXPECT_EQ(entries(2).at(0).state, u"waiting"_s);
    record(*open());
    EXPECT_EQ(said, QStringList());
}

TEST(JournalFileTest, LiesWhereStateBelongs)
{
    struct Case
    {
        std::optional<QByteArray> journal;
        std::optional<QByteArray> state;
        QString path;
    };
    const QString home = QDir::homePath();
    for (const Case &each : std::initializer_list<Case>{
             {std::nullopt, std::nullopt, home + u"/.local/state/kruv/journal.db"_s},
             {std::nullopt, "/st", u"/st/kruv/journal.db"_s},
             {std::nullopt, "relative", home + u"/.local/state/kruv/journal.db"_s},
             {"/j.db", "/st", u"/j.db"_s},
             {"j.db", "/st", QDir::currentPath() + u"/j.db"_s},
             {"", "/st", QString()},
         }) {
        const EnvironmentVariable journal("KRUV_JOURNAL", each.journal);
        const EnvironmentVariable state("XDG_STATE_HOME", each.state);
        EXPECT_EQ(JournalFile::usualPath(), each.path);
    }
}

} // namespace kruv::test
