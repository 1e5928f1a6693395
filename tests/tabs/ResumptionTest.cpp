// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Resumption.h"

#include "formats/Records.h"
#include "journal/Journal.h"
#include "support/Audio.h"
#include "support/EnvironmentVariable.h"
#include "support/QtPrinters.h"
#include "support/Session.h"

#include <QFile>
#include <QSysInfo>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace kruv::test {

namespace {

class ResumptionTest : public testing::Test
{
protected:
    /// A run of two files, of which the first was done, by a process of another boot.
    void breakOff()
    {
        Journal made(journal.path, [](const QString &) {});
        const ConversionOrder order{.target = &wavFormat, .decodes = true};
        const auto run = made.addRun({.command = u"decode"_s,
                                      .process = QSysInfo::machineHostName() + u"\nboot\n1\n1"_s,
                                      .plan = order.toText(OutputPlan({}, {}))});
        std::vector<EntryRecord> entries;
        for (const QString &name : {u"a"_s, u"b"_s}) {
            writeWav(session.music + u'/' + name + u".aiff"_s, {.frames = 400});
            entries.push_back({session.music + u'/' + name + u".aiff"_s,
                               session.music + u'/' + name + u".wav"_s, EntryRecord::Action::Make});
        }
        const auto first = made.addEntries(run, entries);
        writeFile(entries[0].output, "done");
        made.end(first,
                 {.receipt = Receipt{.outputs = {{entries[0].output, *FileStamp::of(entries[0].output)}}}});
    }
    void offer(std::initializer_list<int> answers)
    {
        session.person.buttonAnswers = answers;
        Resumption::offer(session.controller.taskQueue(), session.controller.runRecorder(), session.person,
                          [this](const HistoryRun &run) { shown.push_back(run.id); });
        EXPECT_TRUE(session.runToEnd());
    }

    struct
    {
        TemporaryFolder folder;
        QString path = folder.file(u"journal.db"_s);
        EnvironmentVariable variable{"KRUV_JOURNAL", QFile::encodeName(path)};
    } journal;
    Session session;
    std::vector<std::int64_t> shown;
};

} // namespace

TEST_F(ResumptionTest, APersonMayContinueLookForgetOrDoItLater)
{
    enum Answer { Continue, Show, Forget, Later };
    offer({});
    EXPECT_TRUE(session.person.questions.empty());

    breakOff();
    offer({Later});
    EXPECT_FALSE(QFile::exists(session.music + u"/b.wav"_s));
    offer({Show});
    EXPECT_EQ(shown.size(), 1U);
    EXPECT_FALSE(QFile::exists(session.music + u"/b.wav"_s));
    offer({Continue});
    ASSERT_EQ(session.person.questions.size(), 3U);
    EXPECT_EQ(session.person.questions[0].title, u"A conversion stopped at 1 of 2."_s);
    EXPECT_TRUE(QFile::exists(session.music + u"/b.wav"_s));
    EXPECT_EQ(readFile(session.music + u"/a.wav"_s), "done");
    session.controller.journal().finish();
    offer({});
    EXPECT_EQ(session.person.questions.size(), 3U) << "all was done";

    breakOff();
    offer({Forget});
    offer({});
    EXPECT_EQ(session.person.questions.size(), 4U);
}

TEST_F(ResumptionTest, TakesOverJobsThatAnotherProcessOnlyRecorded)
{
    const QString source = session.music + u"/c.aiff"_s;
    writeWav(source, {.frames = 400});
    const ConversionOrder order{.target = &wavFormat, .decodes = true};
    OutputPlan plan({}, {});
    plan.entries().push_back(
        {.source = source, .folder = session.music, .output = session.music + u"/c.wav"_s});
    KruvController &controller = session.controller;
    controller.leaveJobsToOthers();
    controller.submit(u"decode"_s, order.makeJobs(plan, &controller.taskQueue()).jobs, order.toText(plan));
    EXPECT_EQ(controller.taskQueue().taskCount(), 0);
    controller.journal().waitUntilWritten();

    const auto takeOver = [&](const QString &path) {
        return Resumption::takeOver(1, path, controller.taskQueue(), controller.runRecorder());
    };
    EXPECT_FALSE(takeOver(u"/another/journal.db"_s));
    EXPECT_TRUE(takeOver(journal.path));
    EXPECT_TRUE(session.runToEnd());
    EXPECT_TRUE(QFile::exists(session.music + u"/c.wav"_s));
}

} // namespace kruv::test
