// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person does to a queue that has begun.

#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/BatteryPause.h"
#include "tasks/FakeJob.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

QStringList rows(KruvTaskQueue &queue)
{
    QStringList titles;
    for (int row = 0; row < queue.panelArray().rowCount(); ++row) {
        titles << queue.panelArray().task(row).title();
        EXPECT_EQ(queue.panelArray().rowOf(queue.panelArray().task(row)), row);
    }
    return titles;
}

} // namespace

TEST(KruvTaskQueue, BeginsNothingWhilePausedAndLetsTheMachineSleep)
{
    Engine engine(2);
    engine.queue.pause();
    EXPECT_FALSE(engine.queue.isPaused()) << "nothing to hold";
    const Jobs jobs = makeSet(engine.queue, 6);
    addAll(engine.queue, jobs);
    engine.queue.pause();
    EXPECT_EQ(engine.power.released, 1);
    jobs[0]->succeed();
    engine.queue.setMaxThreads(4);
    const Jobs more = makeSet(engine.queue, 1);
    addAll(engine.queue, more);
    EXPECT_EQ(running(jobs) + running(more), 1);
    EXPECT_EQ(engine.power.taken, 1);
    engine.queue.goOn();
    EXPECT_EQ(engine.power.taken, 2);
    EXPECT_EQ(running(jobs), 4);
    engine.queue.pause();
    engine.queue.cancelAllTasks();
    EXPECT_FALSE(engine.queue.isPaused()) << "what comes next begins";
    EXPECT_EQ(engine.queue.taskCount(), 0);
    EXPECT_EQ(engine.power.released, 2);
}

TEST(Steering, WhatEndsWhilePausedEndsNoBusyPeriod)
{
    Engine engine(1);
    const Jobs jobs = makeSet(engine.queue, 2);
    addAll(engine.queue, jobs);
    engine.queue.pause();
    jobs[0]->succeed();
    EXPECT_TRUE(engine.queue.isPaused());
    EXPECT_EQ(engine.userInterface.notifications.size(), 0);
    engine.queue.goOn();
    EXPECT_TRUE(jobs[1]->isActive());
}

TEST(Steering, JobsBeginInTheOrderThatTheyWereMovedInto)
{
    using Move = KruvTaskQueue::Move;
    struct Case
    {
        std::size_t job;
        Move where;
        const char *order; // of which the first runs
    };
    for (const Case &tested :
         {Case{4, Move::First, "15234"}, Case{4, Move::Up, "12354"}, Case{1, Move::Down, "13245"},
          Case{1, Move::Up, "12345"}, Case{4, Move::Down, "12345"}, Case{0, Move::Down, "12345"},
          Case{2, Move::First, "13245"}}) {
        Engine engine(1);
        QStringList starts;
        const Jobs jobs = makeSet(engine.queue, 5, &starts);
        addAll(engine.queue, jobs);
        EXPECT_EQ(engine.queue.placeFor(*jobs[tested.job], tested.where) != nullptr,
                  tested.order != std::string("12345"));
        engine.queue.move(*jobs[tested.job], tested.where);
        EXPECT_EQ(rows(engine.queue).join(QString()), QString::fromLatin1(tested.order));
        while (engine.queue.taskCount() > 0) {
            std::ranges::find_if(jobs, [](const auto &job) { return job->isActive(); })->get()->succeed();
        }
        EXPECT_EQ(starts.join(QString()), QString::fromLatin1(tested.order));
    }
}

TEST(Steering, ManyMoveFirstAtOnceAndKeepTheirOrder)
{
    Engine engine(1);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 6, &starts);
    addAll(engine.queue, jobs);
    const QPersistentModelIndex fifth = engine.queue.panelArray().index(4);
    engine.queue.moveFirst({jobs[0], jobs[2], jobs[4]});
    EXPECT_EQ(rows(engine.queue).join(QString()), u"135246"_s);
    EXPECT_EQ(fifth.row(), 2) << "what is selected stays so";
    engine.queue.moveFirst({jobs.begin(), jobs.end()});
    engine.queue.moveFirst({jobs[5]});
    while (engine.queue.taskCount() > 0) {
        std::ranges::find_if(jobs, [](const auto &job) { return job->isActive(); })->get()->succeed();
    }
    EXPECT_EQ(starts.join(QString()), u"162345"_s);
}

TEST(Steering, StopsAfterTheRunningOnes)
{
    for (const auto followUps : {KruvTaskQueue::FollowUps::Come, KruvTaskQueue::FollowUps::Refused}) {
        Engine engine(2);
        QStringList starts;
        const Jobs jobs = makeSet(engine.queue, 9, &starts);
        const auto list = std::make_shared<FakeJob>(&engine.queue, u"list"_s, &starts);
        jobs[0]->results()->setTaskAfterSetDone(list);
        addAll(engine.queue, jobs);
        EXPECT_EQ(engine.queue.cancelWaiting(followUps), 7);
        EXPECT_EQ(running(jobs), 2);
        jobs[0]->succeed();
        jobs[1]->succeed();
        EXPECT_EQ(starts.size(), followUps == KruvTaskQueue::FollowUps::Come ? 3 : 2);
        EXPECT_EQ(engine.queue.taskCount(), list->isActive() ? 1 : 0);
    }
}

TEST(Steering, FailedJobsAreMadeOnceMore)
{
    Engine engine(1);
    const Jobs jobs = makeSet(engine.queue, 3);
    Jobs again;
    for (const std::size_t index : {0U, 1U}) {
        jobs[index]->setMaker([&] {
            again.push_back(std::make_shared<FakeJob>(&engine.queue, u"again"_s));
            return again.back();
        });
    }
    addAll(engine.queue, jobs);
    jobs[0]->failWith(u"no room"_s);
    jobs[1]->succeed();
    EXPECT_TRUE(engine.queue.canTryFailedAgain());
    engine.queue.tryFailedAgain();
    EXPECT_FALSE(engine.queue.canTryFailedAgain());
    EXPECT_EQ(rows(engine.queue), QStringList({u"2"_s, u"3"_s, u"again"_s}));
    jobs[2]->failWith(u"nobody can make it again"_s);
    ASSERT_EQ(again.size(), 1U);
    EXPECT_TRUE(again[0]->isActive());
    again[0]->succeed();
    EXPECT_EQ(engine.queue.taskCount(), 0);
}

TEST(Steering, PausesOnBatteryUntilAPersonOverrulesIt)
{
    Engine engine(1);
    BatteryPause battery(engine.queue);
    const Jobs jobs = makeSet(engine.queue, 2);
    addAll(engine.queue, jobs);
    battery.setOnBattery(true);
    EXPECT_FALSE(engine.queue.isPaused()) << "the preference is off at first";
    engine.preferences.setValue(u"pauseOnBattery"_s, true);
    battery.setOnBattery(true);
    EXPECT_TRUE(engine.queue.isPaused());
    battery.setOnBattery(false);
    EXPECT_FALSE(engine.queue.isPaused());

    battery.setOnBattery(true);
    engine.queue.goOn();
    jobs[0]->succeed(); // and another one starts
    serveEvents();
    EXPECT_FALSE(engine.queue.isPaused()) << "a person went on";
    battery.setOnBattery(false);
    engine.queue.pause();
    battery.setOnBattery(true);
    battery.setOnBattery(false);
    EXPECT_TRUE(engine.queue.isPaused()) << "a person's own pause";
    engine.queue.cancelAllTasks();

    battery.setOnBattery(true);
    addAll(engine.queue, makeSet(engine.queue, 1));
    EXPECT_TRUE(waitUntil([&] { return engine.queue.isPaused(); })) << "jobs that come on battery";
}
