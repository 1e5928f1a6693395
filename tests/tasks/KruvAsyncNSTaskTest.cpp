// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvAsyncNSTask.h"

#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QFile>

#include <algorithm>
#include <atomic>
#include <csignal>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

/// Runs the fake tool and notes what the runner does with it.
class ToolJob : public KruvAsyncNSTask
{
public:
    using KruvAsyncNSTask::KruvAsyncNSTask;

    QStringList pieces;
    QStringList steps;
    std::function<void()> cleanupWork = [] {};

    void processTaskOutput(const QString &text) override
    {
        pieces << text;
        KruvAsyncNSTask::processTaskOutput(text);
    }
    void willEnd() override { steps << u"willEnd"_s; }
    void neverRan() override
    {
        steps << u"neverRan"_s;
        KruvAsyncNSTask::neverRan();
    }
    void cleanup() override
    {
        steps << (steps.contains(u"willEnd"_s) && !isDone() ? u"cleanup"_s : u"cleanup at the wrong time"_s);
        cleanupWork();
    }
    void finalCleanup() override
    {
        steps << (results()->taskSetDone() ? u"finalCleanup"_s : u"set not done"_s);
    }
};

class KruvAsyncNSTaskTest : public testing::Test
{
protected:
    std::shared_ptr<ToolJob> makeJob(const QStringList &arguments, const QString &tool = fakeTool())
    {
        auto job = std::make_shared<ToolJob>(&engine.queue, tool, arguments);
        job->setTitle(arguments.value(0));
        return job;
    }

    std::shared_ptr<ToolJob> run(const QStringList &arguments, const QString &tool = fakeTool())
    {
        auto job = makeJob(arguments, tool);
        engine.queue.addTask(job);
        EXPECT_TRUE(engine.runToEnd());
        EXPECT_TRUE(job->isDone());
        return job;
    }

    /// A job whose tool goes on until `release` is made.
    std::shared_ptr<ToolJob> makeWaitingJob(const QString &mode = u"wait"_s)
    {
        return makeJob({mode, marker, release});
    }

    static QString hex(const QByteArray &bytes) { return QString::fromLatin1(bytes.toHex()); }
    bool toolRuns()
    {
        return waitUntil([this] { return QFile::exists(marker); });
    }

    Engine engine{2};
    QString marker = engine.folder.file(u"marker"_s);
    QString release = engine.folder.file(u"release"_s);
};

const QStringList wholeLife = {u"willEnd"_s, u"cleanup"_s, u"finalCleanup"_s};

} // namespace

TEST_F(KruvAsyncNSTaskTest, TheToolsEndAndWordsDecide)
{
    struct Case
    {
        QString status;
        QByteArray printed;
        QString results;
    };
    const Case cases[] = {
        {u"0"_s, "all is well\n", u"all is well\n\n"_s},
        {u"0"_s, "", u"\n"_s},
        {u"3"_s, "ERROR: no space", u"ERROR: no space\n"_s},
        {u"3"_s, "", u"fake_tool ended with status 3 and said nothing.\n\n"_s},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.results.toStdString());
        const bool fails = tested.status != u"0";
        const auto job = run({u"print"_s, tested.status, hex(tested.printed)});
        EXPECT_EQ(job->error(), fails);
        EXPECT_EQ(job->topTextField().text, fails ? u"Error"_s : u"Complete"_s);
        EXPECT_EQ(job->results()->results(), tested.results);
        EXPECT_EQ(job->steps, wholeLife);
        EXPECT_TRUE(job->startTime().isValid());
        EXPECT_EQ(engine.userInterface.resultsWindows.back().text, tested.results);
    }
}

TEST_F(KruvAsyncNSTaskTest, AToolThatDiesByASignalFailsTheJob)
{
    for (const int signal : {SIGSEGV, SIGKILL}) {
        const auto job = run({u"die"_s, QString::number(signal)});
        EXPECT_TRUE(job->error());
        EXPECT_TRUE(
            job->results()->results().startsWith(u"fake_tool was ended by signal %1 ("_s.arg(signal)));
    }
}

TEST_F(KruvAsyncNSTaskTest, AFloodEndsWithMemoryInBounds)
{
    const auto job = run({u"flood"_s, u"100"_s});
    EXPECT_FALSE(job->error());
    const auto printed =
        std::accumulate(job->pieces.begin(), job->pieces.end(), qsizetype{0},
                        [](qsizetype sum, const QString &piece) { return sum + piece.size(); });
    EXPECT_GE(printed, 100 * 1024 * 1024);
    EXPECT_LT(job->results()->results().size(), KruvTaskResults::maxTextLength + 100);
}

TEST_F(KruvAsyncNSTaskTest, CharactersCutByAReadAreJoined)
{
    const QByteArray text = u"Zażółć 𝄞 ok"_s.toUtf8();
    QStringList arguments = {u"print"_s, u"0"_s};
    for (const char byte : text) {
        arguments << hex(QByteArray(1, byte));
    }
    const auto job = run(arguments);
    EXPECT_EQ(job->results()->results(), QString::fromUtf8(text) + u'\n');
    EXPECT_GT(job->pieces.size(), 1);
    EXPECT_FALSE(job->pieces.contains(QString()));
}

TEST_F(KruvAsyncNSTaskTest, BytesThatAreNoTextDoNotHurt)
{
    const auto job = run({u"print"_s, u"0"_s, hex("caf\xe9 \xff\xfe.wav\n"), hex("\xe2\x82")});
    EXPECT_FALSE(job->error());
    EXPECT_TRUE(job->results()->results().startsWith(u"caf\uFFFD \uFFFD\uFFFD.wav\n"_s));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatClosesItsOutputIsWaitedFor)
{
    const auto job = makeJob({u"close"_s, marker});
    bool markerWasThere = false;
    job->cleanupWork = [this, &markerWasThere] { markerWasThere = QFile::exists(marker); };
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_FALSE(job->error());
    EXPECT_TRUE(markerWasThere) << "the outcome work came before the tool's own end";
}

TEST_F(KruvAsyncNSTaskTest, NoToolWaitsForAnAnswerThatNobodyCanGive)
{
    int ends[2] = {};
    ASSERT_EQ(pipe(ends), 0);
    const int ownInput = dup(STDIN_FILENO);
    dup2(ends[0], STDIN_FILENO); // a pipe that never ends
    const auto job = run({u"echo"_s});
    dup2(ownInput, STDIN_FILENO);
    for (const int descriptor : {ends[0], ends[1], ownInput}) {
        close(descriptor);
    }
    EXPECT_EQ(job->results()->results(), u"read 0 bytes: \n"_s);
}

TEST_F(KruvAsyncNSTaskTest, ArgumentsAndFolderReachTheToolAsTheyAre)
{
    const QStringList hostile = {u"-dash"_s,    u"two words"_s, u"100%1 %2"_s,
                                 u"\"'`$(x)"_s, u"Zażółć 𝄞"_s,  QString()};
    const auto job = makeJob(QStringList{u"show"_s} + hostile);
    const QString folder = engine.folder.makeFolder(u"a b"_s);
    job->setDirectory(folder);
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    const QStringList lines = job->results()->results().split(u'\n');
    EXPECT_EQ(lines.value(0), u"folder="_s + folder);
    for (int i = 0; i < hostile.size(); ++i) {
        EXPECT_EQ(lines.value(i + 1), u"argument="_s + hostile[i]);
    }
    EXPECT_TRUE(lines.contains(u"NSUnbufferedIO=YES"_s));
    EXPECT_TRUE(job->description().startsWith(u"\"%1\"\n \"show\"\n \"-dash\"\n "_s.arg(fakeTool())));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatCannotBeLaunchedFailsTheJobAndSaysWhy)
{
    const QString notATool = engine.folder.write(u"not a tool"_s, "\x7f"
                                                                  "ELF nonsense");
    QFile::setPermissions(notATool, QFile::ReadOwner | QFile::ExeOwner);
    const QString noPermission = engine.folder.write(u"metaflac"_s, "#!/bin/sh\n");
    QFile::setPermissions(noPermission, QFile::ReadOwner);
    const std::pair<QString, QString> cases[] = {
        {engine.folder.file(u"lame"_s), u"sudo apt-get install lame"_s},
        {engine.folder.file(u"mac"_s), u"build or install Kruv again"_s},
        {engine.folder.path(), u"isn't an executable file"_s},
        {noPermission, u"sudo apt-get install flac"_s},
        {notATool, u"could not be started: "_s},
    };
    for (const auto &[tool, words] : cases) {
        SCOPED_TRACE(tool.toStdString());
        const auto job = run({u"x"_s}, tool);
        EXPECT_TRUE(job->error());
        EXPECT_TRUE(job->results()->results().contains(words)) << job->results()->results().toStdString();
        EXPECT_TRUE(job->results()->results().contains(tool));
        EXPECT_TRUE(job->steps.isEmpty()) << "no outcome work without an outcome";
        EXPECT_EQ(job->topTextField().text, u"Error"_s);
    }
}

TEST_F(KruvAsyncNSTaskTest, AMissingWorkingFolderFailsTheJob)
{
    const auto job = makeJob({u"show"_s});
    job->setDirectory(engine.folder.file(u"not there"_s));
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_TRUE(job->results()->results().contains(u"could not be started"_s));
}

TEST_F(KruvAsyncNSTaskTest, OutcomeWorkThatThrowsFailsTheJob)
{
    const auto job = makeJob({u"print"_s, u"0"_s});
    job->cleanupWork = [] { throw std::runtime_error("the tags could not be copied"); };
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(), u"the tags could not be copied\n\n"_s);
}

TEST_F(KruvAsyncNSTaskTest, CancellingLetsTheToolEndByItself)
{
    for (const QString &mode : {u"wait"_s, u"chatter"_s}) {
        SCOPED_TRACE(mode.toStdString());
        QFile::remove(marker);
        QFile::remove(release);
        const auto job = makeWaitingJob(mode);
        engine.queue.addTask(job);
        ASSERT_TRUE(toolRuns());
        job->cancelTask();
        serveEvents();
        EXPECT_TRUE(job->cancelled() && job->isActive() && !job->isDone());
        EXPECT_EQ(engine.queue.taskCount(), 1);
        engine.folder.write(u"release"_s, {});
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_FALSE(job->error());
        EXPECT_TRUE(job->state().doneAllTheSame());
        EXPECT_EQ(job->textField().text, u"Canceled"_s);
        EXPECT_EQ(job->steps, wholeLife);
    }
}

TEST_F(KruvAsyncNSTaskTest, CancellingTwiceEndsTheToolWhetherItListensOrNot)
{
    for (const QString &mode : {u"stay"_s, u"deaf"_s}) {
        SCOPED_TRACE(mode.toStdString());
        QFile::remove(marker);
        const auto job = makeJob({mode, marker});
        engine.queue.addTask(job);
        ASSERT_TRUE(toolRuns());
        job->cancelTask();
        job->cancelTask();
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_TRUE(job->cancelled() && !job->state().doneAllTheSame());
        EXPECT_FALSE(job->error()) << "a cancelled job never becomes failed";
        EXPECT_EQ(job->results()->results(), u"\n"_s);
        EXPECT_TRUE(endsSoon(readFile(marker).trimmed()));
    }
}

TEST_F(KruvAsyncNSTaskTest, AFloodWaitsForTheMainThread)
{
    const auto residentBytes = [] {
        return readFile(u"/proc/self/statm"_s).split(' ').at(1).toLongLong() * sysconf(_SC_PAGESIZE);
    };
    const qint64 before = residentBytes();
    const auto job = makeJob({u"flood"_s, u"100"_s});
    engine.queue.addTask(job);
    usleep(500'000); // the main thread is busy elsewhere
    EXPECT_LT(residentBytes() - before, 50'000'000);
    ASSERT_TRUE(engine.runToEnd());
}

TEST_F(KruvAsyncNSTaskTest, ACancelledWaitingJobNeverRuns)
{
    const auto first = makeWaitingJob();
    const auto second = makeJob({u"print"_s, u"0"_s});
    engine.queue.setMaxThreads(1);
    engine.queue.addTask(first);
    engine.queue.addTask(second);
    second->cancelTask();
    EXPECT_TRUE(second->isDone());
    EXPECT_EQ(second->steps, (QStringList{u"willEnd"_s, u"neverRan"_s, u"finalCleanup"_s}));
    EXPECT_EQ(engine.queue.taskCount(), 1);
    engine.folder.write(u"release"_s, {});
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(second->pieces.isEmpty());
    EXPECT_EQ(engine.userInterface.resultsWindows.size(), 1U) << "only the one that ran";
}

TEST_F(KruvAsyncNSTaskTest, TheQueueIsBusyUntilOutcomeWorkIsDone)
{
    std::atomic<bool> inCleanup = false;
    std::atomic<bool> mayEnd = false;
    int idle = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::becameIdle, &engine.queue, [&idle] { ++idle; });
    const auto job = makeJob({u"print"_s, u"0"_s});
    job->cleanupWork = [&] {
        inCleanup = true;
        while (!mayEnd) {
            std::this_thread::yield();
        }
    };
    engine.queue.addTask(job);
    ASSERT_TRUE(waitUntil([&] { return inCleanup.load(); }));
    engine.queue.cancelAllTasks();
    EXPECT_EQ(idle, 0);
    EXPECT_EQ(engine.queue.taskCount(), 1);
    mayEnd = true;
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(idle, 1);
    EXPECT_FALSE(job->cancelled()) << "its tool had ended already";
}

TEST_F(KruvAsyncNSTaskTest, QuittingWithFiftyQueuedLeavesNoProcess)
{
    {
        Engine quitting{3};
        for (int i = 0; i < 50; ++i) {
            quitting.queue.addTask(std::make_shared<ToolJob>(
                &quitting.queue, fakeTool(),
                QStringList{u"wait"_s, quitting.folder.file(QString::number(i)), release}));
        }
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(quitting.folder.file(u"2"_s)); }));
        quitting.queue.killAllTasks();
        EXPECT_EQ(quitting.queue.taskCount(), 3);
        EXPECT_FALSE(QFile::exists(quitting.folder.file(u"3"_s)));
        engine.folder.write(u"release"_s, {});
        ASSERT_TRUE(quitting.runToEnd());
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
}

TEST_F(KruvAsyncNSTaskTest, HundredsOfToolsRunThroughTheQueue)
{
    std::vector<std::shared_ptr<ToolJob>> jobs;
    for (int i = 0; i < 200; ++i) {
        jobs.push_back(makeJob({u"print"_s, i % 10 == 0 ? u"1"_s : u"0"_s},
                               i % 7 == 0 ? engine.folder.file(u"missing"_s) : fakeTool()));
        engine.queue.addTask(jobs.back());
    }
    ASSERT_TRUE(engine.runToEnd());
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        EXPECT_EQ(jobs[i]->error(), i % 10 == 0 || i % 7 == 0) << i;
    }
    EXPECT_EQ(engine.queue.activeTask(), 0);
}
