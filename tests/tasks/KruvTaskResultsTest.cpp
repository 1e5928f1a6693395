// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTaskResults.h"

#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tasks/FakeJob.h"

#include <gtest/gtest.h>
#include <thread>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;
using Window = ScriptedUserInterface::Window;

TEST(KruvTaskResults, JoinsTheTextsInSetOrder)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 3);
    KruvTaskResults &results = *jobs[0]->results();
    EXPECT_EQ(results.results(), u"\n\n\n"_s);
    jobs[2]->say(u"c"_s);
    jobs[0]->say(u"a"_s);
    results.appendResults(u"+"_s, *jobs[0]);
    results.appendResults(u"first"_s);
    EXPECT_EQ(results.results(), u"a+first\n\nc\n"_s);
    EXPECT_EQ(results.results(*jobs[2]), u"c"_s);

    results.setHasResults(false);
    results.setResults(u"new"_s, *jobs[1]);
    EXPECT_TRUE(results.hasResults());
    results.setHasResults(false);
    results.setResults(u"head"_s);
    EXPECT_TRUE(results.hasResults());
    EXPECT_EQ(results.results(), u"head\nnew\nc\n"_s);
}

TEST(KruvTaskResults, LinesOfOursStandByThemselves)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 1);
    KruvTaskResults &results = *jobs[0]->results();
    results.appendLine(u"one"_s, *jobs[0]);
    jobs[0]->say(u"MISMATCH"_s);
    results.appendLine(u"kept"_s, *jobs[0]);
    EXPECT_EQ(results.results(*jobs[0]), u"one\nMISMATCH\nkept\n"_s);
}

TEST(KruvTaskResults, FloodsAreCutAndSaySo)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 20);
    const QString block(KruvTaskResults::maxTextLength / 2 + 1, u'x');
    for (const auto &job : jobs) {
        for (int i = 0; i < 5; ++i) {
            job->say(block);
        }
    }
    KruvTaskResults &results = *jobs[0]->results();
    EXPECT_TRUE(results.results(*jobs[0]).endsWith(u"[The rest of this output was left out.]\n"));
    EXPECT_EQ(results.results(*jobs[0]).count(u"left out"), 1);
    qsizetype kept = 0;
    for (const auto &job : jobs) {
        kept += results.results(*job).size();
    }
    EXPECT_LT(kept, KruvTaskResults::maxSetLength + 2000);
    results.setResults(u"short"_s, *jobs[0]);
    jobs[0]->say(u" and more"_s);
    EXPECT_EQ(results.results(*jobs[0]), u"short and more"_s);
}

TEST(KruvTaskResults, ManyThreadsAppendAtOnce)
{
    Engine engine;
    const Jobs jobs = makeSet(engine.queue, 4);
    std::vector<std::thread> threads;
    for (const auto &job : jobs) {
        threads.emplace_back([&job] {
            for (int i = 0; i < 1000; ++i) {
                job->say(u"x"_s);
                static_cast<void>(job->results()->results().size());
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }
    EXPECT_EQ(jobs[0]->results()->results().count(u'x'), 4000);
}

TEST(KruvTaskResults, TheFollowUpIsQueuedOnceAfterEveryJobOfTheSet)
{
    Engine engine(2);
    QStringList starts;
    const Jobs jobs = makeSet(engine.queue, 4, &starts);
    const auto followUp = std::make_shared<FakeJob>(&engine.queue, u"follow-up"_s, &starts);
    jobs[0]->results()->setTaskAfterSetDone(followUp);
    addAll(engine.queue, jobs);
    jobs[0]->cancelTask();
    jobs[3]->cancelTask();
    jobs[1]->failWith(u"no"_s);
    serveEvents();
    EXPECT_FALSE(starts.contains(u"follow-up"));
    jobs[2]->succeed();
    jobs[0]->stopTask(); // a job that says it twice
    serveEvents();
    EXPECT_EQ(starts.count(u"follow-up"), 1);
    EXPECT_EQ(engine.queue.taskCount(), 1);
    followUp->succeed();
    EXPECT_EQ(engine.queue.taskCount(), 0);
}

TEST(ResultsWindow, OpensOnlyWhenEveryJobOfTheSetKeptItsText)
{
    struct Case
    {
        const char *what;
        FakeJob::Kind kind;
        QString outcomes; // f failed, s succeeded, c cancelled
        std::vector<Window> windows;
    };
    const auto conversion = FakeJob::Kind::Conversion;
    const auto report = FakeJob::Kind::Report;
    const std::vector<Window> allTexts = {{u"text 1\ntext 2\ntext 3\n"_s, u"3"_s}};
    const Case cases[] = {
        {"all failed", conversion, u"fff"_s, allTexts},        {"one failed", conversion, u"fss"_s, {}},
        {"the last failed", conversion, u"ssf"_s, {}},         {"none failed", conversion, u"sss"_s, {}},
        {"one cancelled", conversion, u"fcf"_s, {}},           {"reports", report, u"sss"_s, allTexts},
        {"reports of mixed fate", report, u"sfs"_s, allTexts},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.what);
        Engine engine(3);
        const Jobs jobs = makeSet(engine.queue, 3, nullptr, tested.kind);
        addAll(engine.queue, jobs);
        for (const std::size_t i : {0U, 1U, 2U}) {
            jobs[i]->say(u"text %1"_s.arg(i + 1));
            if (tested.outcomes[static_cast<qsizetype>(i)] == u'c') {
                jobs[i]->cancelTask();
                continue;
            }
            jobs[i]->setError(tested.outcomes[static_cast<qsizetype>(i)] == u'f');
            jobs[i]->stopTask();
        }
        EXPECT_EQ(engine.userInterface.resultsWindows, tested.windows);
    }
}
