// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// Closing the window and quitting, with and without jobs.

#include "gui/WindowFixture.h"
#include "support/Engine.h"
#include "tasks/FakeJob.h"
#include "tasks/KruvAsyncNSTask.h"

#include <QAction>
#include <QSignalSpy>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

using QuittingTest = WindowTest;

TEST_F(QuittingTest, QuitsWithoutAQuestionWhenNothingRuns)
{
    QSignalSpy ended(window.get(), &MainWindow::readyToEnd);
    find<QAction>(window.get(), "quit")->trigger();
    EXPECT_EQ(ended.count(), 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(QuittingTest, AsksBeforeTheWindowCloses)
{
    QSignalSpy ended(window.get(), &MainWindow::readyToEnd);
    answerQuestion(u"No"_s);
    window->close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(ended.count(), 0);
    answerQuestion(u"Yes"_s);
    window->close();
    EXPECT_EQ(ended.count(), 1);
    ASSERT_EQ(questions.size(), 2U);
    EXPECT_EQ(questions[0].title, u"Are you sure you want to quit?"_s);
    EXPECT_EQ(questions[0].text, QString());
    EXPECT_EQ(questions[0].buttons, (QStringList{u"No"_s, u"Yes"_s}));
    EXPECT_EQ(questions[0].defaultButton, u"No"_s);
}

TEST_F(QuittingTest, CountsTheJobsAndWaitsForTheirTools)
{
    const QString marker = folder.file(u"started"_s);
    auto running = std::make_shared<KruvAsyncNSTask>(&queue(), fakeTool(), QStringList{u"stay"_s, marker});
    addTask(running);
    addTask(std::make_shared<FakeJob>(&queue(), u"a"_s));
    addTask(std::make_shared<FakeJob>(&queue(), u"b"_s));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));

    QSignalSpy ended(window.get(), &MainWindow::readyToEnd);
    answerQuestion(u"No"_s);
    window->quit();
    ASSERT_EQ(questions.size(), 1U);
    EXPECT_EQ(questions[0].title, u"Tasks in Progress"_s);
    EXPECT_EQ(questions[0].text, u"There are 3 tasks in the queue.  Are you sure you want to quit?"_s);
    EXPECT_EQ(questions[0].defaultButton, u"No"_s);
    EXPECT_EQ(queue().taskCount(), 3);

    answerQuestion(u"Yes"_s);
    window->close();
    EXPECT_EQ(questions.size(), 2U) << "one question is enough";
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(queue().taskCount(), 1) << "the running tool is waited for";
    EXPECT_EQ(ended.count(), 0);
    window->quit(); // once more: now
    EXPECT_TRUE(waitUntil([&] { return ended.count() == 1; }));
    EXPECT_TRUE(running->cancelled());
}

TEST_F(QuittingTest, EndsWithoutAskingWhereNobodyCanAnswer)
{
    const QString marker = folder.file(u"started"_s);
    addTask(std::make_shared<KruvAsyncNSTask>(&queue(), fakeTool(), QStringList{u"stay"_s, marker}));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
    QSignalSpy ended(window.get(), &MainWindow::readyToEnd);
    withNextDialog([&](QWidget *) { window->quitWithoutAsking(); });
    window->quit();
    EXPECT_TRUE(waitUntil([&] { return ended.count() == 1; }));
    EXPECT_EQ(queue().taskCount(), 0);
}

} // namespace kruv::test
