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
    void willEnd() override { steps << QStringLiteral("willEnd"); }
    void neverRan() override
    {
        steps << QStringLiteral("neverRan");
        KruvAsyncNSTask::neverRan();
    }
    void cleanup() override
    {
        steps << (isDone() && !isActive() ? QStringLiteral("cleanup") : QStringLiteral("early cleanup"));
        cleanupWork();
    }
    void finalCleanup() override
    {
        steps << (results()->taskSetDone() ? QStringLiteral("finalCleanup") : QStringLiteral("set not done"));
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
    std::shared_ptr<ToolJob> makeWaitingJob(const QString &mode = QStringLiteral("wait"))
    {
        return makeJob({mode, marker, release});
    }

    static QString hex(const QByteArray &bytes) { return QString::fromLatin1(bytes.toHex()); }
    bool toolRuns()
    {
        return waitUntil([this] { return QFile::exists(marker); });
    }

    Engine engine{2};
    QString marker = engine.folder.file(QStringLiteral("marker"));
    QString release = engine.folder.file(QStringLiteral("release"));
};

const QStringList wholeLife = {QStringLiteral("willEnd"), QStringLiteral("cleanup"),
                               QStringLiteral("finalCleanup")};

} // namespace

TEST_F(KruvAsyncNSTaskTest, AToolThatSucceedsCompletesTheJob)
{
    const auto job = run({QStringLiteral("print"), QStringLiteral("0"), hex("all is well\n")});
    EXPECT_FALSE(job->error());
    EXPECT_EQ(job->topTextField().text, QStringLiteral("Complete"));
    EXPECT_EQ(job->results()->results(), QStringLiteral("all is well\n\n"));
    EXPECT_EQ(job->steps, wholeLife);
    EXPECT_TRUE(job->startTime().isValid());
}

TEST_F(KruvAsyncNSTaskTest, AToolThatPrintsNothingCompletesTheJob)
{
    const auto job = run({QStringLiteral("print"), QStringLiteral("0")});
    EXPECT_FALSE(job->error());
    EXPECT_EQ(job->results()->results(), QStringLiteral("\n"));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatFailsKeepsItsWords)
{
    const auto job = run({QStringLiteral("print"), QStringLiteral("3"), hex("ERROR: no space")});
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(), QStringLiteral("ERROR: no space\n"));
    EXPECT_EQ(job->steps, wholeLife);
    ASSERT_EQ(engine.userInterface.resultsWindows.size(), 1U);
    EXPECT_EQ(engine.userInterface.resultsWindows[0].text, QStringLiteral("ERROR: no space\n"));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatFailsInSilenceIsSpokenFor)
{
    const auto job = run({QStringLiteral("print"), QStringLiteral("3")});
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(),
              QStringLiteral("fake_tool ended with status 3 and said nothing.\n\n"));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatDiesByASignalFailsTheJob)
{
    for (const int signal : {SIGSEGV, SIGKILL}) {
        const auto job = run({QStringLiteral("die"), QString::number(signal)});
        EXPECT_TRUE(job->error());
        EXPECT_TRUE(job->results()->results().startsWith(
            QStringLiteral("fake_tool was ended by signal %1 (").arg(signal)));
    }
}

TEST_F(KruvAsyncNSTaskTest, AFloodEndsWithMemoryInBounds)
{
    const auto job = run({QStringLiteral("flood"), QStringLiteral("100")});
    EXPECT_FALSE(job->error());
    const auto printed =
        std::accumulate(job->pieces.begin(), job->pieces.end(), qsizetype{0},
                        [](qsizetype sum, const QString &piece) { return sum + piece.size(); });
    EXPECT_GE(printed, 100 * 1024 * 1024);
    EXPECT_LT(job->results()->results().size(), KruvTaskResults::maxTextLength + 100);
}

TEST_F(KruvAsyncNSTaskTest, CharactersCutByAReadAreJoined)
{
    const QByteArray text = QStringLiteral("Zażółć 𝄞 ok").toUtf8();
    QStringList arguments = {QStringLiteral("print"), QStringLiteral("0")};
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
    const auto job =
        run({QStringLiteral("print"), QStringLiteral("0"), hex("caf\xe9 \xff\xfe.wav\n"), hex("\xe2\x82")});
    EXPECT_FALSE(job->error());
    EXPECT_TRUE(job->results()->results().startsWith(QStringLiteral("caf\uFFFD \uFFFD\uFFFD.wav\n")));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatClosesItsOutputIsWaitedFor)
{
    const auto job = makeJob({QStringLiteral("close"), marker});
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
    const auto job = run({QStringLiteral("echo")});
    dup2(ownInput, STDIN_FILENO);
    for (const int descriptor : {ends[0], ends[1], ownInput}) {
        close(descriptor);
    }
    EXPECT_EQ(job->results()->results(), QStringLiteral("read 0 bytes: \n"));
}

TEST_F(KruvAsyncNSTaskTest, ArgumentsAndFolderReachTheToolAsTheyAre)
{
    const QStringList hostile = {QStringLiteral("-dash"),    QStringLiteral("two words"),
                                 QStringLiteral("100%1 %2"), QStringLiteral("\"'`$(x)"),
                                 QStringLiteral("Zażółć 𝄞"), QString()};
    const auto job = makeJob(QStringList{QStringLiteral("show")} + hostile);
    const QString folder = engine.folder.makeFolder(QStringLiteral("a b"));
    job->setDirectory(folder);
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    const QStringList lines = job->results()->results().split(u'\n');
    EXPECT_EQ(lines.value(0), QStringLiteral("folder=") + folder);
    for (int i = 0; i < hostile.size(); ++i) {
        EXPECT_EQ(lines.value(i + 1), QStringLiteral("argument=") + hostile[i]);
    }
    EXPECT_TRUE(lines.contains(QStringLiteral("NSUnbufferedIO=YES")));
    EXPECT_TRUE(
        job->description().startsWith(QStringLiteral("\"%1\"\n \"show\"\n \"-dash\"\n ").arg(fakeTool())));
}

TEST_F(KruvAsyncNSTaskTest, AToolThatCannotBeLaunchedFailsTheJobAndSaysWhy)
{
    const QString notATool = engine.folder.write(QStringLiteral("not a tool"), "\x7f"
                                                                               "ELF nonsense");
    QFile::setPermissions(notATool, QFile::ReadOwner | QFile::ExeOwner);
    const QString noPermission = engine.folder.write(QStringLiteral("metaflac"), "#!/bin/sh\n");
    QFile::setPermissions(noPermission, QFile::ReadOwner);
    const std::pair<QString, QString> cases[] = {
        {engine.folder.file(QStringLiteral("lame")), QStringLiteral("sudo apt-get install lame")},
        {engine.folder.file(QStringLiteral("mac")), QStringLiteral("build or install Kruv again")},
        {engine.folder.path(), QStringLiteral("isn't an executable file")},
        {noPermission, QStringLiteral("sudo apt-get install flac")},
        {notATool, QStringLiteral("could not be started: ")},
    };
    for (const auto &[tool, words] : cases) {
        SCOPED_TRACE(tool.toStdString());
        const auto job = run({QStringLiteral("x")}, tool);
        EXPECT_TRUE(job->error());
        EXPECT_TRUE(job->results()->results().contains(words)) << job->results()->results().toStdString();
        EXPECT_TRUE(job->results()->results().contains(tool));
        EXPECT_TRUE(job->steps.isEmpty()) << "no outcome work without an outcome";
        EXPECT_EQ(job->topTextField().text, QStringLiteral("Error"));
    }
}

TEST_F(KruvAsyncNSTaskTest, AMissingWorkingFolderFailsTheJob)
{
    const auto job = makeJob({QStringLiteral("show")});
    job->setDirectory(engine.folder.file(QStringLiteral("not there")));
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_TRUE(job->results()->results().contains(QStringLiteral("could not be started")));
}

TEST_F(KruvAsyncNSTaskTest, OutcomeWorkThatThrowsFailsTheJob)
{
    const auto job = makeJob({QStringLiteral("print"), QStringLiteral("0")});
    job->cleanupWork = [] { throw std::runtime_error("the tags could not be copied"); };
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(), QStringLiteral("the tags could not be copied\n\n"));
}

TEST_F(KruvAsyncNSTaskTest, CancellingLetsTheToolEndByItself)
{
    for (const QString &mode : {QStringLiteral("wait"), QStringLiteral("chatter")}) {
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
        engine.folder.write(QStringLiteral("release"), {});
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_FALSE(job->error());
        EXPECT_EQ(job->textField().text, QStringLiteral("Canceled"));
        EXPECT_EQ(job->steps, wholeLife);
    }
}

TEST_F(KruvAsyncNSTaskTest, CancellingTwiceEndsTheTool)
{
    const auto job = makeJob({QStringLiteral("stay"), marker});
    engine.queue.addTask(job);
    ASSERT_TRUE(toolRuns());
    job->cancelTask();
    job->cancelTask();
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->cancelled());
    EXPECT_FALSE(job->error()) << "a cancelled job never becomes failed";
    EXPECT_EQ(job->results()->results(), QStringLiteral("\n"));
}

TEST_F(KruvAsyncNSTaskTest, ACancelledWaitingJobNeverRuns)
{
    const auto first = makeWaitingJob();
    const auto second = makeJob({QStringLiteral("print"), QStringLiteral("0")});
    engine.queue.setMaxThreads(1);
    engine.queue.addTask(first);
    engine.queue.addTask(second);
    second->cancelTask();
    EXPECT_TRUE(second->isDone());
    EXPECT_EQ(second->steps, (QStringList{QStringLiteral("willEnd"), QStringLiteral("neverRan"),
                                          QStringLiteral("finalCleanup")}));
    EXPECT_EQ(engine.queue.taskCount(), 1);
    engine.folder.write(QStringLiteral("release"), {});
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
    const auto job = makeJob({QStringLiteral("print"), QStringLiteral("0")});
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
                QStringList{QStringLiteral("wait"), quitting.folder.file(QString::number(i)), release}));
        }
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(quitting.folder.file(QStringLiteral("2"))); }));
        quitting.queue.killAllTasks();
        EXPECT_EQ(quitting.queue.taskCount(), 3);
        EXPECT_FALSE(QFile::exists(quitting.folder.file(QStringLiteral("3"))));
        engine.folder.write(QStringLiteral("release"), {});
        ASSERT_TRUE(quitting.runToEnd());
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
}

TEST_F(KruvAsyncNSTaskTest, AQueueThatGoesAwayTakesItsToolsAlong)
{
    {
        const TemporaryFolder folder;
        Preferences preferences(folder.file(QStringLiteral("p.conf")));
        ScriptedUserInterface person;
        KruvTaskQueue queue(preferences, person, nullptr);
        queue.addTask(std::make_shared<ToolJob>(&queue, fakeTool(),
                                                QStringList{QStringLiteral("chatter"), marker, release}));
        ASSERT_TRUE(toolRuns());
    }
    serveEvents();
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child is left";
}

TEST_F(KruvAsyncNSTaskTest, HundredsOfToolsRunThroughTheQueue)
{
    std::vector<std::shared_ptr<ToolJob>> jobs;
    for (int i = 0; i < 200; ++i) {
        jobs.push_back(
            makeJob({QStringLiteral("print"), i % 10 == 0 ? QStringLiteral("1") : QStringLiteral("0")},
                    i % 7 == 0 ? engine.folder.file(QStringLiteral("missing")) : fakeTool()));
        engine.queue.addTask(jobs.back());
    }
    ASSERT_TRUE(engine.runToEnd());
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        EXPECT_EQ(jobs[i]->error(), i % 10 == 0 || i % 7 == 0) << i;
    }
    EXPECT_EQ(engine.queue.activeTask(), 0);
}
