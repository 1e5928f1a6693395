// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/StagedTask.h"

#include "support/Engine.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;
using namespace kruv;
using namespace kruv::test;

namespace {

/// Runs the fake tool once for each list of arguments, as long as it may go on.
class StagedJob : public StagedTask
{
public:
    StagedJob(TaskCompletionSink *queue, QList<QStringList> runs, const QString &tool = fakeTool())
        : StagedTask(queue, u"/music/a.wav"_s)
        , m_runs(std::move(runs))
        , m_tool(tool)
    {
    }

    int steps = 0;
    QString printed;

protected:
    void doStartTask() override
    {
        for (const QStringList &arguments : m_runs) {
            const bool goesOn = runTool(m_tool, arguments, [this](const QString &piece) { take(piece); });
            EXPECT_EQ(goesOn, !error() && !cancelled());
            if (!goesOn) {
                return;
            }
            ++steps;
        }
    }

private:
    void take(const QString &piece)
    {
        printed += piece;
        appendResults(piece);
        showProgress(u"Working: %1"_s.arg(printed), static_cast<double>(printed.size()));
        setError(error() || piece.contains(u"FATAL"));
    }

    const QList<QStringList> m_runs;
    const QString m_tool;
};

QStringList prints(const QString &status, const QByteArray &text)
{
    return {u"print"_s, status, QString::fromLatin1(text.toHex())};
}

} // namespace

TEST(StagedTask, ToolsRunOneAfterTheOtherUntilOneFails)
{
    struct Case
    {
        QList<QStringList> runs;
        int steps;
        QString results;
    };
    const QStringList good = prints(u"0"_s, "well ");
    const Case cases[] = {
        {{good, good}, 2, u"well well \n"_s},
        {{good, prints(u"3"_s, "no space"), good}, 1, u"well no space\n"_s},
        {{prints(u"3"_s, ""), good}, 0, u"fake_tool ended with status 3 and said nothing.\n\n"_s},
        {{{u"die"_s, u"9"_s}, good}, 0, u"fake_tool was ended by signal 9 (Killed).\n\n"_s},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.results.toStdString());
        Engine engine;
        const auto job = std::make_shared<StagedJob>(&engine.queue, tested.runs);
        engine.queue.addTask(job);
        ASSERT_TRUE(engine.runToEnd());
        const bool fails = tested.steps < tested.runs.size();
        EXPECT_EQ(job->error(), fails);
        EXPECT_EQ(job->results()->hasResults(), fails);
        EXPECT_EQ(job->steps, tested.steps);
        EXPECT_EQ(job->results()->results(), tested.results);
    }
}

TEST(StagedTask, AMissingToolFailsTheJobAndNamesIt)
{
    Engine engine;
    const auto job =
        std::make_shared<StagedJob>(&engine.queue, QList<QStringList>{{}}, u"/nowhere/wavpack"_s);
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_TRUE(job->results()->results().contains(u"sudo apt-get install wavpack"_s));
}

TEST(StagedTask, AToolThatNobodyWantsAnyMoreIsEnded)
{
    // None of these ends by itself: one hangs in silence, one floods its pipe, one waits for something.
    for (const QString &mode : {u"stay"_s, u"chatter"_s, u"wait"_s}) {
        SCOPED_TRACE(mode.toStdString());
        Engine engine;
        int ends = 0;
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&ends] { ++ends; });
        const QString marker = engine.folder.file(mode);
        const auto job = std::make_shared<StagedJob>(
            &engine.queue, QList<QStringList>{{mode, marker, engine.folder.file(u"never"_s)}, {u"show"_s}});
        engine.queue.addTask(job);
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
        job->cancelTask();
        EXPECT_FALSE(job->isDone()) << "ended before its tool";
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_TRUE(job->cancelled() && !job->error() && job->isDone());
        EXPECT_EQ(job->steps, 0);
        EXPECT_EQ(job->textField().text, u"Canceled"_s);
        EXPECT_EQ(ends, 1);
    }
}

TEST(StagedTask, AFailureSeenInTheOutputEndsTheTool)
{
    Engine engine;
    QStringList arguments = prints(u"0"_s, "FATAL");
    for (int i = 0; i < 10'000; ++i) {
        arguments << u"2e"_s; // minutes of dots
    }
    const auto job = std::make_shared<StagedJob>(&engine.queue, QList<QStringList>{arguments, {u"show"_s}});
    engine.queue.addTask(job);
    ASSERT_TRUE(engine.runToEnd());
    EXPECT_TRUE(job->error());
    EXPECT_EQ(job->steps, 0);
    EXPECT_LT(job->printed.size(), 100);
}
