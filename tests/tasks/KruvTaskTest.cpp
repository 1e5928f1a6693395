// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTask.h"

#include "base/TaskPool.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/FakeJob.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

/// A job that does its work on the background pool.
class BackgroundJob : public FakeJob
{
public:
    using FakeJob::FakeJob;

    std::function<void(BackgroundJob &)> work;
    bool endingFails = false;

    void startTask() override
    {
        FakeJob::startTask();
        runInBackground([this] {
            work(*this);
            stopTask();
        });
    }

    void stopTask() override
    {
        if (endingFails) {
            throw std::runtime_error("the tags could not be copied");
        }
        FakeJob::stopTask();
    }

    void showProgress(double percent)
    {
        setTopTextFieldString(u"Working: %1"_s.arg(percent));
        setProgressIndicatorValue(percent);
        publish(&KruvTask::updateStatus);
    }
};

std::shared_ptr<BackgroundJob> makeBackgroundJob(Engine &engine, std::function<void(BackgroundJob &)> work)
{
    auto job = std::make_shared<BackgroundJob>(&engine.queue, u"background"_s);
    job->work = std::move(work);
    return job;
}

} // namespace

TEST(KruvTask, TheRowFollowsTheLifeOfTheJob)
{
    Engine engine(1);
    const Jobs jobs = makeSet(engine.queue, 3);
    addAll(engine.queue, jobs);
    EXPECT_EQ(jobs[0]->textField().text, u"1"_s);
    EXPECT_FALSE(jobs[0]->cancelButton().hidden);
    EXPECT_FALSE(jobs[0]->progressIndicator().hidden);
    EXPECT_EQ(jobs[1]->topTextField().text, u"Waiting..."_s);
    EXPECT_TRUE(jobs[1]->cancelButton().hidden);
    EXPECT_TRUE(jobs[1]->progressIndicator().hidden);

    jobs[0]->startIndeterminateProgressBar();
    EXPECT_TRUE(jobs[0]->progressIndicator().indeterminate && jobs[0]->progressIndicator().animated);
    jobs[0]->failWith(u"no"_s);
    EXPECT_EQ(jobs[0]->topTextField().text, u"Error"_s);
    EXPECT_EQ(jobs[0]->textField().color, RowColor::Red);
    EXPECT_FALSE(jobs[0]->progressIndicator().animated);
    EXPECT_FALSE(jobs[0]->progressIndicator().hidden) << "the bar of a failed job stays";

    jobs[1]->succeed();
    EXPECT_EQ(jobs[1]->topTextField().text, u"Complete"_s);
    EXPECT_EQ(jobs[1]->textField().color, RowColor::DarkGreen);
    EXPECT_TRUE(jobs[1]->progressIndicator().hidden);

    jobs[2]->cancelTask();
    EXPECT_EQ(jobs[2]->textField().text, u"Canceled"_s);
    EXPECT_EQ(jobs[2]->textField().color, RowColor::Red);
    for (const auto &job : jobs) {
        EXPECT_TRUE(job->isDone() && !job->isActive() && job->cancelButton().hidden);
    }
}

TEST(KruvTask, CancellingAnEndedJobChangesNothing)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 1);
    addAll(engine.queue, jobs);
    jobs[0]->succeed();
    jobs[0]->cancelTask();
    EXPECT_FALSE(jobs[0]->cancelled());
    EXPECT_EQ(jobs[0]->topTextField().text, u"Complete"_s);
}

TEST(KruvTask, ManyBackgroundJobsReportAndEnd)
{
    Engine engine(8);
    std::atomic<int> atOnce = 0;
    std::atomic<int> mostAtOnce = 0;
    std::vector<std::shared_ptr<BackgroundJob>> jobs;
    for (int i = 0; i < 200; ++i) {
        jobs.push_back(makeBackgroundJob(engine, [&](BackgroundJob &job) {
            mostAtOnce = std::max(mostAtOnce.load(), ++atOnce);
            for (int percent = 0; percent <= 100; percent += 10) {
                job.showProgress(percent);
            }
            job.say(u"done"_s);
            --atOnce;
        }));
        engine.queue.addTask(jobs.back());
    }
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_LE(mostAtOnce, 8);
    for (const auto &job : jobs) {
        EXPECT_EQ(job->topTextField().text, u"Complete"_s);
        EXPECT_EQ(job->progressIndicator().value, 100.0);
        EXPECT_EQ(job->results()->results(), u"done\n"_s);
    }
    EXPECT_EQ(engine.userInterface.notifications.size(), 1);
}

TEST(KruvTask, ACancelledBackgroundJobEndsAtOnceAndReportsAgainLater)
{
    Engine engine(1);
    std::atomic<bool> mayEnd = false;
    const auto job = makeBackgroundJob(engine, [&mayEnd](BackgroundJob &self) {
        while (!mayEnd) {
            std::this_thread::yield();
        }
        if (!self.cancelled()) {
            self.setError(true);
        }
    });
    const auto next = std::make_shared<FakeJob>(&engine.queue, u"next"_s);
    const auto afterNext = std::make_shared<FakeJob>(&engine.queue, u"after next"_s);
    engine.queue.addTask(job);
    engine.queue.addTask(next);
    engine.queue.addTask(afterNext);
    job->cancelTask();
    EXPECT_TRUE(job->isDone());
    EXPECT_EQ(engine.queue.taskCount(), 2);
    EXPECT_TRUE(next->isActive());
    EXPECT_FALSE(afterNext->isActive());
    mayEnd = true;
    ASSERT_TRUE(waitUntil([&] { return afterNext->isActive(); })) << "the second report frees a place";
    EXPECT_EQ(job->textField().text, u"Canceled"_s);
    EXPECT_FALSE(job->error());
    next->succeed();
    afterNext->succeed();
}

TEST(KruvTask, WhatBackgroundWorkThrowsEndsTheJobOnce)
{
    Engine engine(1);
    int completions = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&] { ++completions; });
    const auto job =
        makeBackgroundJob(engine, [](BackgroundJob &) { throw std::runtime_error("disk full"); });
    const auto badEnding = makeBackgroundJob(engine, [](BackgroundJob &) {});
    badEnding->endingFails = true;
    const auto waiting = std::make_shared<FakeJob>(&engine.queue, u"waiting"_s);
    const auto last = std::make_shared<FakeJob>(&engine.queue, u"last"_s);
    engine.queue.addTask(job);
    engine.queue.addTask(badEnding);
    engine.queue.addTask(waiting);
    engine.queue.addTask(last);
    ASSERT_TRUE(waitUntil([&] { return waiting->isActive(); }));
    TaskPool::drain();
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(), u"disk full\n\n"_s);
    EXPECT_TRUE(badEnding->error() && badEnding->isDone());
    EXPECT_EQ(completions, 2);
    EXPECT_FALSE(last->isActive()) << "each end counted once";
    waiting->succeed();
    last->succeed();
}

TEST(TaskPool, DrainsTheWorkThatItsWorkBrings)
{
    Engine engine(1);
    for (int i = 0; i < 3; ++i) {
        engine.queue.addTask(makeBackgroundJob(engine, [](BackgroundJob &) {}));
    }
    TaskPool::drain();
    EXPECT_EQ(engine.queue.taskCount(), 0) << "each end starts the next";
}
