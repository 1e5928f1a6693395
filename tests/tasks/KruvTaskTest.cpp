// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTask.h"

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
        runInBackground([this] { work(*this); });
    }
    void stopRunning() override
    {
        KruvTask::stopRunning(); // NOLINT(bugprone-parent-virtual-call): as jobs do it
    }
    bool startLastPart() { return startFinishing(); }

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

TEST(KruvTask, ACancelledBackgroundJobEndsWithItsWork)
{
    Engine engine(1);
    int ends = 0;
    QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&ends] { ++ends; });
    std::atomic<bool> mayEnd = false;
    const auto job = makeBackgroundJob(engine, [&mayEnd](BackgroundJob &self) {
        while (!mayEnd) {
            std::this_thread::yield();
        }
        self.setError(true); // its tool was ended
    });
    const auto next = std::make_shared<FakeJob>(&engine.queue, u"next"_s);
    engine.queue.addTask(job);
    engine.queue.addTask(next);
    job->cancelTask();
    job->cancelTask();
    serveEvents();
    EXPECT_TRUE(job->isActive() && job->cancelled());
    EXPECT_FALSE(next->isActive()) << "its work still runs";
    mayEnd = true;
    ASSERT_TRUE(waitUntil([&] { return next->isActive(); }));
    drainPool();
    EXPECT_EQ(ends, 1);
    EXPECT_EQ(job->textField().text, u"Canceled"_s);
    EXPECT_FALSE(job->error());
    next->succeed();
}

TEST(KruvTask, WhatIsAsGoodAsDoneCannotBeCancelled)
{
    Engine engine(2);
    std::atomic<bool> inLastPart = false;
    std::atomic<bool> mayEnd = false;
    const auto last = makeBackgroundJob(engine, [&](BackgroundJob &self) {
        inLastPart = self.startLastPart();
        while (!mayEnd) {
            std::this_thread::yield();
        }
    });
    engine.queue.addTask(last);
    ASSERT_TRUE(waitUntil([&] { return inLastPart.load(); }));
    last->cancelTask();
    mayEnd = true;
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_FALSE(last->cancelled());
    EXPECT_EQ(last->topTextField().text, u"Complete"_s);

    std::atomic<bool> begun = true;
    const auto cancelled = makeBackgroundJob(engine, [&](BackgroundJob &self) {
        while (!self.cancelled()) {
            std::this_thread::yield();
        }
        begun = self.startLastPart();
    });
    engine.queue.addTask(cancelled);
    cancelled->cancelTask();
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_FALSE(begun);
    EXPECT_TRUE(cancelled->cancelled());
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
    drainPool();
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->results()->results(), u"disk full\n\n"_s);
    EXPECT_TRUE(badEnding->error() && badEnding->isDone());
    EXPECT_EQ(completions, 2);
    EXPECT_FALSE(last->isActive()) << "each end counted once";
    waiting->succeed();
    last->succeed();
}
