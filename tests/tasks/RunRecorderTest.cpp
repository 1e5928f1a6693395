// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/RunRecorder.h"

#include "journal/History.h"
#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/FakeJob.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class RunRecorderTest : public testing::Test
{
protected:
    std::vector<HistoryRun> runs()
    {
        journal.finish();
        std::vector<HistoryRun> found;
        History(path).forEachRun([&found](const HistoryRun &run) { found.push_back(run); });
        return found;
    }

    Engine engine;
    QString path = engine.folder.file(u"journal.db"_s);
    Journal journal{path, [](const QString &sentence) { ADD_FAILURE() << sentence.toStdString(); }};
    RunRecorder recorder{journal, engine.queue};
};

} // namespace

TEST_F(RunRecorderTest, TheListIsInTheFileBeforeTheFirstJobStarts)
{
    QList<qint64> seen; // entries, at each start
    QObject::connect(&engine.queue, &KruvTaskQueue::taskStarted, [&] {
        seen.append(0);
        History(path).forEachEntryOf(1, [&seen](const HistoryEntry &) { ++seen.back(); });
    });
    recorder.announce(u"encode"_s, {});
    const Jobs jobs = makeSet(engine.queue, 500);
    addAll(engine.queue, jobs);
    EXPECT_TRUE(!seen.isEmpty() && seen.front() == 500) << seen.value(0);
    engine.queue.cancelAllTasks();
}

TEST_F(RunRecorderTest, AFollowUpBelongsToTheRunThatBroughtIt)
{
    recorder.announce(u"encode"_s, {});
    const Jobs jobs = makeSet(engine.queue, 4);
    const auto list = std::make_shared<FakeJob>(&engine.queue, u"list"_s);
    jobs[0]->results()->setTaskAfterSetDone(list);
    addAll(engine.queue, jobs);
    serveEvents();
    // The same command again, and another's, while the first goes on.
    recorder.announce(u"encode"_s, {});
    engine.queue.addTask(std::make_shared<FakeJob>(&engine.queue, u"again"_s));
    recorder.announce(u"verify"_s, {});
    engine.queue.addTask(std::make_shared<FakeJob>(&engine.queue, u"other"_s));

    jobs[0]->succeed();
    jobs[1]->failWith(u"no room"_s);
    jobs[2]->cancelTask();
    jobs[3]->succeed();
    serveEvents();
    EXPECT_TRUE(engine.queue.taskCount() == 3 && !list->isDone());
    engine.queue.cancelAllTasks();

    const auto found = runs();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[2].all, 5);
    EXPECT_EQ(found[2].done, 2);
    EXPECT_EQ(found[2].failed, 1);
    EXPECT_EQ(found[2].cancelled, 2);
    for (std::size_t index = 0; index < found.size(); ++index) {
        EXPECT_EQ(found[index].command, index == 0 ? u"verify"_s : u"encode"_s);
        EXPECT_TRUE(found[index].ended);
    }
    History(path).forEachEntryOf(found[2].id, [](const HistoryEntry &entry) {
        EXPECT_EQ(entry.reason, entry.state == u"error" ? u"no room"_s : QString());
    });
}

TEST_F(RunRecorderTest, WhatAPersonDidToTheQueueIsTrueInTheJournal)
{
    recorder.announce(u"encode"_s, {});
    const Jobs jobs = makeSet(engine.queue, 4);
    std::shared_ptr<FakeJob> again;
    jobs[0]->setMaker([&] { return again = std::make_shared<FakeJob>(&engine.queue, u"1"_s); });
    addAll(engine.queue, jobs);
    serveEvents();
    engine.queue.remove(*jobs[3]);
    jobs[0]->failWith(u"no room"_s);
    jobs[1]->succeed();
    jobs[2]->succeed();
    engine.queue.tryFailedAgain();
    again->succeed();
    recorder.announce(u"decode"_s, {});
    addAll(engine.queue, makeSet(engine.queue, 3));
    recorder.breakOff();
    engine.queue.cancelAllTasks();

    const auto found = runs();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[1].done, 3);
    EXPECT_EQ(found[1].failed + found[1].cancelled, 0);
    EXPECT_TRUE(found[1].ended);
    EXPECT_TRUE(found[0].ended);
    for (const auto jobs : {History::Jobs::NotDone, History::Jobs::Left}) {
        std::vector<std::int64_t> left;
        History(path).forEachRunWith(jobs, [&left](const HistoryRun &run) { left.push_back(run.id); });
        EXPECT_EQ(left, std::vector({found[0].id})) << "nobody wants what was removed";
    }
}

TEST_F(RunRecorderTest, ACommandLineIsOneRun)
{
    recorder.recordAs(u"verify"_s, {u"verify"_s, u"/music"_s});
    for (const QString &tab : {u"checksum"_s, u"decode"_s}) {
        recorder.announce(tab, {});
        const auto job = std::make_shared<FakeJob>(&engine.queue, tab);
        engine.queue.addTask(job);
        job->succeed();
        serveEvents();
    }
    const auto found = runs();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].command, u"verify"_s);
    EXPECT_EQ(found[0].arguments.size(), 2);
    EXPECT_EQ(found[0].done, 2);
    EXPECT_TRUE(found[0].ended);
}

} // namespace kruv::test
