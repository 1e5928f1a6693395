// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTaskQueue.h"

#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/FakeJob.h"

#include <algorithm>
#include <cstdint>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

QStringList numbers(int from, int to)
{
    QStringList list;
    for (int number = from; number <= to; ++number) {
        list << QString::number(number);
    }
    return list;
}

} // namespace

TEST(KruvTaskQueue, StartsInOrderAndNeverMoreThanTheLimit)
{
    for (const int limit : {1, 2, 5}) {
        Engine engine(limit);
        QStringList starts;
        const Jobs jobs = makeSet(engine.queue, 20, &starts);
        addAll(engine.queue, jobs);
        EXPECT_EQ(starts, numbers(1, limit));
        for (int ended = 0; ended < 20; ++ended) {
            EXPECT_EQ(running(jobs), std::min(limit, 20 - ended));
            EXPECT_EQ(engine.userInterface.badge, 20 - ended);
            jobs[static_cast<std::size_t>(ended)]->succeed();
        }
        EXPECT_EQ(starts, numbers(1, 20));
        EXPECT_EQ(engine.queue.taskCount(), 0);
        EXPECT_EQ(engine.queue.activeTask(), 0);
    }
}

TEST(KruvTaskQueue, StartsTheLongestOfACommandFirst)
{
    for (const bool longestFirst : {true, false}) {
        Engine engine;
        engine.preferences.setValue(u"longestFirst"_s, longestFirst);
        engine.queue.setMaxThreads(1);
        QStringList starts;
        const auto command = [&](const QString &name, std::initializer_list<qint64> lengths) {
            Jobs jobs;
            for (const qint64 length : lengths) {
                jobs.push_back(
                    std::make_shared<FakeJob>(&engine.queue, name + QString::number(length), &starts));
                jobs.back()->work = length;
            }
            addAll(engine.queue, jobs);
            return jobs;
        };
        Jobs jobs = command(u"a"_s, {10, 30, 20});
        for (const auto &later : command(u"b"_s, {40})) { // its turn comes after the earlier command's
            jobs.push_back(later);
        }
        for (std::size_t ended = 0; ended < jobs.size(); ++ended) {
            std::ranges::find_if(jobs, [](const auto &job) { return job->isActive(); })->get()->succeed();
            serveEvents();
        }
        EXPECT_EQ(starts.join(u' '), longestFirst ? u"a30 a20 a10 b40"_s : u"a10 a30 a20 b40"_s);
    }
}

TEST(KruvTaskQueue, OneThatOnlyWaitsFreesItsPlaceAndIsWaitedFor)
{
    Engine engine(1);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 100, &starts);
    addAll(engine.queue, jobs);
    for (const auto &job : jobs) {
        engine.queue.taskOnlyWaits(*job);
        serveEvents();
    }
    EXPECT_EQ(starts, numbers(1, 65)) << "each that waits holds its outputs: not any number of them may";
    EXPECT_EQ(engine.queue.activeTask(), 1);
    for (std::size_t ended = 0; ended < jobs.size(); ++ended) {
        EXPECT_TRUE(engine.userInterface.notifications.isEmpty());
        jobs[ended]->succeed();
        EXPECT_LE(engine.queue.activeTask(), 1);
    }
    EXPECT_EQ(starts.size(), 100);
    EXPECT_EQ(engine.userInterface.notifications.size(), 1);
}

TEST(KruvTaskQueue, TakesItsLimitFromThePreferencesAndFollowsThem)
{
    const TemporaryFolder folder;
    Preferences preferences(folder.file(u"p.conf"_s));
    ScriptedUserInterface person;
    KruvTaskQueue queue(preferences, person, nullptr);
    const Jobs jobs = makeSet(queue, 9);
    addAll(queue, jobs);
    EXPECT_EQ(running(jobs), 2);
    preferences.setMaxThreads(4);
    EXPECT_EQ(running(jobs), 4) << "as many more as the new limit allows";
    jobs[0]->succeed();
    EXPECT_EQ(running(jobs), 4);
    preferences.setMaxThreads(1);
    EXPECT_EQ(running(jobs), 4) << "running jobs are not touched";
    jobs[1]->succeed();
    jobs[2]->succeed();
    jobs[3]->succeed();
    EXPECT_EQ(running(jobs), 1);
    preferences.setMaxThreads(0);
    jobs[4]->succeed();
    EXPECT_EQ(running(jobs), 1) << "a limit of nothing would never end";
    queue.cancelAllTasks();
}

TEST(KruvTaskQueue, TheLimitHoldsWhateverIsCancelled)
{
    Engine engine(2);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 8, &starts);
    addAll(engine.queue, jobs);
    jobs[5]->cancelTask();
    EXPECT_EQ(engine.queue.taskCount(), 7);
    EXPECT_EQ(starts, numbers(1, 2)) << "a job that never ran frees no place";
    jobs[0]->cancelTask();
    jobs[0]->stopTask(); // a job that says it twice
    EXPECT_EQ(starts, numbers(1, 3));
    EXPECT_EQ(engine.queue.activeTask(), 2);
    for (const std::size_t next : {1U, 2U, 3U, 4U, 6U}) {
        EXPECT_EQ(engine.queue.panelArray().rowCount(), 8) << "rows stay until nothing runs";
        jobs[next]->succeed();
        EXPECT_TRUE(engine.userInterface.notifications.isEmpty()) << "the last job still runs";
    }
    jobs[7]->succeed();
    EXPECT_FALSE(starts.contains(u"6"));
    EXPECT_EQ(engine.queue.panelArray().rowCount(), 0);
    EXPECT_EQ(engine.queue.activeTask(), 0);
    EXPECT_EQ(engine.userInterface.notifications, QStringList{u"Kruv task(s) completed"_s});
}

TEST(KruvTaskQueue, AFollowUpBelongsToTheBusyPeriodOfItsSet)
{
    Engine engine(2);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 2, &starts);
    const Jobs others = makeSet(engine.queue, 3, &starts);
    const auto followUp = std::make_shared<FakeJob>(&engine.queue, u"follow-up"_s, &starts);
    jobs[0]->results()->setTaskAfterSetDone(followUp);
    addAll(engine.queue, jobs);
    jobs[0]->succeed();
    jobs[1]->succeed();
    EXPECT_TRUE(engine.userInterface.notifications.isEmpty());
    EXPECT_TRUE(followUp->isActive());
    addAll(engine.queue, others);
    followUp->succeed();
    for (const auto &job : others) {
        job->succeed();
    }
    EXPECT_EQ(engine.userInterface.notifications.size(), 1);
    EXPECT_EQ(starts, (QStringList{u"1"_s, u"2"_s, u"follow-up"_s, u"1"_s, u"2"_s, u"3"_s}));
}

TEST(KruvTaskQueue, EndsABusyPeriodWithoutErrorsByClosingEverything)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 3);
    int idle = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::becameIdle, &engine.queue, [&idle] { ++idle; });
    addAll(engine.queue, jobs);
    EXPECT_TRUE(engine.userInterface.statusPanelShown);
    EXPECT_EQ(engine.power.taken, 1) << "asked once a busy period";
    EXPECT_EQ(engine.power.released, 0) << "held until the last job has ended";
    for (const auto &job : jobs) {
        job->succeed();
    }
    EXPECT_FALSE(engine.userInterface.statusPanelShown);
    EXPECT_EQ(engine.userInterface.badge, 0);
    EXPECT_EQ(engine.userInterface.notifications, QStringList{u"Kruv task(s) completed"_s});
    EXPECT_EQ(engine.userInterface.attentionRequests, 0);
    EXPECT_EQ(idle, 1);

    engine.userInterface.hasNotifications = false;
    const Jobs more = makeSet(engine.queue, 1);
    addAll(engine.queue, more);
    more[0]->succeed();
    EXPECT_EQ(engine.power.taken, 2);
    EXPECT_EQ(engine.userInterface.attentionRequests, 1) << "a desktop without notifications";
}

TEST(KruvTaskQueue, FailedRowsStayUntilTheyAreRemoved)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 3);
    addAll(engine.queue, jobs);
    jobs[0]->succeed();
    jobs[1]->failWith(u"disk full"_s);
    jobs[2]->cancelTask();
    ASSERT_EQ(engine.queue.panelArray().rowCount(), 1);
    EXPECT_EQ(&engine.queue.panelArray().task(0), jobs[1].get());
    EXPECT_EQ(engine.queue.panelArray().rowOf(*jobs[0]), -1);
    EXPECT_TRUE(engine.userInterface.statusPanelShown);
    EXPECT_EQ(engine.userInterface.badge, 0);
    EXPECT_TRUE(engine.userInterface.notifications.isEmpty());
    engine.queue.removeAllErrors();
    EXPECT_EQ(engine.queue.panelArray().rowCount(), 0);
    EXPECT_FALSE(engine.userInterface.statusPanelShown);
}

TEST(KruvTaskQueue, ScrollsToTheLastRowStarted)
{
    Engine engine(2);
    const Jobs jobs = makeSet(engine.queue, 5);
    addAll(engine.queue, jobs);
    jobs[0]->succeed();
    EXPECT_EQ(engine.userInterface.scrolledToRow, 2);
    jobs[2]->succeed();
    EXPECT_EQ(engine.userInterface.scrolledToRow, 3);
    engine.queue.cancelAllTasks();
}

TEST(KruvTaskQueue, CancelsAllWithoutStartingAny)
{
    Engine engine(3);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 50, &starts);
    addAll(engine.queue, jobs);
    int ended = 0;
    int idle = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&ended] { ++ended; });
    QObject::connect(&engine.queue, &KruvTaskQueue::becameIdle, &engine.queue, [&idle] { ++idle; });
    engine.queue.cancelAllTasks();
    EXPECT_EQ(starts, numbers(1, 3));
    EXPECT_EQ(ended, 50);
    EXPECT_EQ(idle, 1);
    EXPECT_TRUE(std::ranges::all_of(jobs, [](const auto &job) { return job->cancelled() && !job->error(); }));
    EXPECT_TRUE(engine.userInterface.resultsWindows.empty());
    EXPECT_EQ(engine.queue.taskCount(), 0);
    EXPECT_EQ(engine.queue.activeTask(), 0);
    engine.queue.cancelAllTasks();
    EXPECT_EQ(idle, 1) << "nothing was there to cancel";
}

TEST(KruvTaskQueue, TenThousandJobsThatCannotStartNeedNoStack)
{
    Engine engine(2);
    std::uintptr_t highest = 0;
    std::uintptr_t lowest = UINTPTR_MAX;
    const auto noteStack = [&] {
        const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
        highest = std::max(highest, here);
        lowest = std::min(lowest, here);
    };
    int ended = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&] {
        noteStack();
        ++ended;
    });
    const Jobs jobs = makeSet(engine.queue, 10'000);
    for (const auto &job : jobs) {
        job->cannotStart = true;
    }
    addAll(engine.queue, jobs);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_EQ(ended, 10'000);
    EXPECT_LT(highest - lowest, 64U * 1024U);
    EXPECT_TRUE(std::ranges::all_of(jobs, [](const auto &job) { return job->error() && job->isDone(); }));
    EXPECT_EQ(engine.queue.activeTask(), 0);
    ASSERT_EQ(engine.userInterface.resultsWindows.size(), 1U);
    EXPECT_EQ(engine.userInterface.resultsWindows[0].text.count(u"no such tool"_s), 10'000);
}

TEST(KruvTaskQueue, NothingStartsAfterQuitting)
{
    Engine engine(2);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 50, &starts);
    const auto followUp = std::make_shared<FakeJob>(&engine.queue, u"follow-up"_s, &starts);
    jobs[0]->results()->setTaskAfterSetDone(followUp);
    addAll(engine.queue, jobs);
    engine.queue.killAllTasks();
    serveEvents();
    EXPECT_EQ(starts, numbers(1, 2));
    EXPECT_EQ(engine.queue.taskCount(), 0);
    EXPECT_FALSE(followUp->isActive());
}

TEST(KruvTaskQueue, AsksForPowerAgainWhileItIsRefused)
{
    Engine engine;
    engine.power.refuses = true;
    const Jobs jobs = makeSet(engine.queue, 2);
    addAll(engine.queue, jobs);
    EXPECT_EQ(engine.power.released, 0);
    engine.power.refuses = false;
    const Jobs later = makeSet(engine.queue, 1);
    addAll(engine.queue, later);
    EXPECT_EQ(engine.power.taken, 1);
    engine.queue.cancelAllTasks();
}

TEST(KruvTaskQueue, TellsNothingOfJobsItDoesNotHold)
{
    Engine engine;
    int changes = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::taskChanged, &engine.queue, [&changes] { ++changes; });
    const auto job = std::make_shared<FakeJob>(&engine.queue, u"x"_s);
    job->setTextFieldString(u"x"_s);
    job->publish(&KruvTask::setTextFieldValue);
    EXPECT_EQ(changes, 0);
    engine.queue.addTask(job);
    EXPECT_GT(changes, 0);
    engine.queue.cancelAllTasks();
}
