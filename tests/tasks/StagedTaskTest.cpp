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
    StagedJob(Engine &engine, QList<QStringList> runs, const QString &tool = fakeTool())
        : StagedTask(&engine.queue, u"/music/a.wav"_s)
        , m_runs(std::move(runs))
        , m_tool(tool)
    {
    }

    int steps = 0;

protected:
    void doStartTask() override
    {
        const auto read = [this](const QString &piece) {
            appendResults(piece.trimmed());
            setError(error() || piece.contains(u"FATAL"));
        };
        while (steps < m_runs.size() && runTool(m_tool, m_runs[steps], read)) {
            ++steps;
        }
    }

private:
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
        QString says;
        QString tool = fakeTool();
    };
    const QStringList good = prints(u"0"_s, "well ");
    const QStringList lines = prints(u"0"_s, "one\n") + QStringList{u"74776f0a"_s, u"7468"_s, u"726565"_s};
    // Only a tool that is ended at its first word gets through all these in time.
    const QStringList endless = prints(u"0"_s, "FATAL") + QStringList(10'000, u"2e"_s);
    const Case cases[] = {
        {{good, good}, 2, u"well\nwell\n"_s},
        {{good, prints(u"3"_s, "no space"), good}, 1, u"well\nno space"_s},
        {{lines}, 1, u"one\ntwo\nthree"_s},
        {{prints(u"3"_s, ""), good}, 0, u"fake_tool ended with status 3 and said nothing."_s},
        {{{u"die"_s, u"9"_s}, good}, 0, u"fake_tool was ended by signal 9 (Killed)."_s},
        {{endless, good}, 0, u"FATAL"_s},
        {{good}, 0, u"sudo apt-get install wavpack"_s, u"/nowhere/wavpack"_s},
    };
    for (const Case &tested : cases) {
        SCOPED_TRACE(tested.says.toStdString());
        Engine engine;
        const auto job = std::make_shared<StagedJob>(engine, tested.runs, tested.tool);
        engine.queue.addTask(job);
        ASSERT_TRUE(engine.runToEnd());
        const bool fails = tested.steps < tested.runs.size();
        EXPECT_EQ(job->error(), fails);
        EXPECT_EQ(job->results()->hasResults(), fails);
        EXPECT_EQ(job->steps, tested.steps);
        EXPECT_TRUE(job->results()->results().contains(tested.says))
            << job->results()->results().toStdString();
    }
}

TEST(StagedTask, AToolThatNobodyWantsAnyMoreIsEnded)
{
    // None of these ends by itself: one hangs in silence, one floods its pipe, one doesn't listen.
    for (const QString &mode : {u"stay"_s, u"chatter"_s, u"deaf"_s}) {
        SCOPED_TRACE(mode.toStdString());
        Engine engine;
        int ends = 0;
        QObject::connect(&engine.queue, &KruvTaskQueue::taskEnded, &engine.queue, [&ends] { ++ends; });
        const QString marker = engine.folder.file(mode);
        const auto job = std::make_shared<StagedJob>(
            engine, QList<QStringList>{{mode, marker, engine.folder.file(u"never"_s)}, {u"show"_s}});
        engine.queue.addTask(job);
        ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
        job->cancelTask();
        EXPECT_FALSE(job->isDone()) << "ended before its tool";
        ASSERT_TRUE(engine.runToEnd());
        EXPECT_TRUE(job->cancelled() && !job->error() && job->isDone());
        EXPECT_EQ(job->steps, 0);
        EXPECT_EQ(ends, 1);
    }
}
