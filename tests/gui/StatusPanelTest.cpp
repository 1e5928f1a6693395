// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// The status table's rows as laid out and drawn, and what a person does with them.

#include "gui/JobActions.h"
#include "gui/StatusQueueCell.h"
#include "gui/WindowFixture.h"
#include "tasks/FakeJob.h"

#include <QAction>
#include <QApplication>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace kruv::test {

using namespace Qt::Literals::StringLiterals;

class StatusPanelTest : public WindowTest
{
protected:
    std::shared_ptr<FakeJob> submit(const char *title)
    {
        auto job = std::make_shared<FakeJob>(&queue(), QString::fromLatin1(title));
        addTask(job);
        serveEvents();
        return job;
    }

    QListView *table() { return find<QListView>(panel(), "statusTable"); }

    StatusQueueCell::Layout rowLayout(int row)
    {
        QStyleOptionViewItem option;
        option.rect = table()->visualRect(queue().panelArray().index(row));
        return StatusQueueCell::layout(StatusQueueCell::frameOf(option), table()->font());
    }

    /// How many pixels of that part of the table have a colour near `color`.
    int pixelsLike(const QRect &part, const QColor &color)
    {
        const QImage image = table()->viewport()->grab(part).toImage();
        int like = 0;
        for (int at = 0; at < image.width() * image.height(); ++at) {
            const QColor pixel = image.pixelColor(at % image.width(), at / image.width());
            const int distance = std::abs(pixel.red() - color.red()) +
                                 std::abs(pixel.green() - color.green()) +
                                 std::abs(pixel.blue() - color.blue());
            like += distance < 60 ? 1 : 0;
        }
        return like;
    }
};

TEST_F(StatusPanelTest, DrawsProgressAndOutcome)
{
    const auto running = submit("running.wav");
    const auto second = submit("second.wav");
    const auto waiting = submit("waiting.wav");
    ASSERT_TRUE(panel()->isVisible());
    EXPECT_EQ(panel()->windowTitle(), u"Kruv: 0 of 3"_s);

    const QColor fill = table()->palette().color(QPalette::Highlight);
    running->setProgressIndicatorValue(25);
    running->updateStatus();
    const int quarter = pixelsLike(rowLayout(0).progressIndicator, fill);
    running->setProgressIndicatorValue(75);
    running->updateStatus();
    const int threeQuarters = pixelsLike(rowLayout(0).progressIndicator, fill);
    EXPECT_NEAR(threeQuarters, quarter * 3, 0.25 * quarter);
    EXPECT_EQ(pixelsLike(rowLayout(2).progressIndicator, fill), 0);
    EXPECT_GT(pixelsLike(rowLayout(0).cancelButton, QColor(115, 115, 115)), 20);

    running->succeed();
    second->failWith(u"disk full"_s);
    serveEvents();
    EXPECT_EQ(pixelsLike(rowLayout(0).progressIndicator, fill), 0);
    EXPECT_GT(pixelsLike(rowLayout(0).textField, QColor(0, 128, 0)), 20);
    EXPECT_GT(pixelsLike(rowLayout(1).textField, QColor(200, 0, 0)), 20);
    EXPECT_EQ(pixelsLike(rowLayout(0).cancelButton, QColor(115, 115, 115)), 0);
    waiting->succeed();
}

TEST_F(StatusPanelTest, StopsAJobByItsButton)
{
    const auto first = submit("first.wav");
    const auto second = submit("second.wav");
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, rowLayout(1).textField.center());
    EXPECT_FALSE(second->cancelled());
    QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      rowLayout(1).cancelButton.center());
    EXPECT_TRUE(second->cancelled());
    EXPECT_FALSE(first->cancelled());
    EXPECT_EQ(second->textField().text, u"Canceled"_s);
    QTest::mouseClick(find<QPushButton>(panel(), "stopAll"), Qt::LeftButton);
    EXPECT_TRUE(first->cancelled());
    serveEvents();
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(StatusPanelTest, ClosesByItselfUnlessSomethingFailed)
{
    submit("good.wav")->succeed();
    serveEvents();
    EXPECT_FALSE(panel()->isVisible());

    const auto bad = submit("bad.wav");
    const auto good = submit("good.wav");
    bad->failWith(u"no such disc"_s);
    good->succeed();
    serveEvents();
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_EQ(queue().panelArray().rowCount(), 1);

    // Return on the failed row shows what it said.
    table()->setCurrentIndex(queue().panelArray().index(0));
    QTest::keyClick(table(), Qt::Key_Return);
    QString said;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *each : windows) {
        if (each->objectName() == u"outputWindow" && each->isVisible()) {
            said = each->findChild<QPlainTextEdit *>()->toPlainText();
            each->close();
        }
    }
    EXPECT_TRUE(said.contains(u"no such disc"_s)) << said.toStdString();

    withNextDialog([](QWidget *popup) {
        auto *menu = qobject_cast<QMenu *>(popup);
        ASSERT_NE(menu, nullptr);
        EXPECT_EQ(menu->actions().constLast()->text(), u"Remove all errors"_s);
        menu->actions().constLast()->trigger();
        menu->close();
    });
    Q_EMIT table()->customContextMenuRequested({5, 5});
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(queue().panelArray().rowCount(), 0);
}

TEST_F(StatusPanelTest, ShowsWhatIsRemarkableUntilItIsRemoved)
{
    const auto odd = submit("odd.wav");
    const auto good = submit("good.wav");
    odd->remark = u"Its header is odd."_s;
    odd->succeed();
    good->succeed();
    serveEvents();
    EXPECT_TRUE(panel()->isVisible());
    ASSERT_EQ(queue().panelArray().rowCount(), 1);
    EXPECT_EQ(odd->topTextField().text, u"Complete. Its header is odd."_s);
    find<QPushButton>(panel(), "removeErrors")->click();
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_EQ(queue().panelArray().rowCount(), 0);
}

TEST_F(StatusPanelTest, ScrollsToTheJobStartedLast)
{
    std::vector<std::shared_ptr<FakeJob>> jobs;
    jobs.reserve(60);
    for (int number = 0; number < 60; ++number) {
        jobs.push_back(submit("job"));
    }
    for (int number = 0; number < 50; ++number) {
        jobs[static_cast<std::size_t>(number)]->succeed();
    }
    serveEvents();
    const QRect last = table()->visualRect(queue().panelArray().index(51));
    EXPECT_TRUE(table()->viewport()->rect().contains(last));
    EXPECT_TRUE(panel()->windowTitle().startsWith(u"Kruv: "_s));
}

TEST_F(StatusPanelTest, SteersTheQueueByTheRowsThatAreSelected)
{
    const auto action = [this](const char *name) {
        auto *found = userInterface.jobActions()->findChild<QAction *>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    };
    const auto enabled = [&] {
        QStringList names;
        for (const QAction *each : userInterface.jobActions()->all()) {
            if (each->isEnabled() && !each->isSeparator()) {
                names << each->objectName();
            }
        }
        return names.join(u' ');
    };
    const auto titles = [this] {
        QStringList rows;
        for (int row = 0; row < queue().panelArray().rowCount(); ++row) {
            rows << queue().panelArray().task(row).title();
        }
        return rows.join(u' ');
    };
    const auto select = [this](int row) { table()->setCurrentIndex(queue().panelArray().index(row)); };
    EXPECT_EQ(enabled(), QString());
    queue().setMaxThreads(1);
    const auto running = submit("a");
    for (const char *title : {"b", "c", "d"}) {
        submit(title);
    }
    EXPECT_TRUE(waitUntil([&] { return enabled() == u"pauseJobs stopAfterRunning"; }))
        << enabled().toStdString();
    select(3);
    EXPECT_TRUE(waitUntil([&] {
        return enabled() == u"pauseJobs stopAfterRunning moveFirst moveUp removeFromQueue";
    })) << enabled().toStdString();
    action("moveFirst")->trigger();
    EXPECT_EQ(titles(), u"a d b c"_s);
    EXPECT_EQ(table()->currentIndex().row(), 1) << "the selection goes with its job";
    table()->selectAll();
    for (const char *name : {"moveUp", "moveDown"}) {
        action(name)->trigger();
        EXPECT_EQ(titles(), u"a d b c"_s) << "none passes another that is selected";
    }
    select(1);
    QTest::keyClick(table(), Qt::Key_Delete);
    EXPECT_EQ(titles(), u"a b c"_s);

    auto *pause = find<QPushButton>(panel(), "pause");
    pause->click();
    EXPECT_TRUE(queue().isPaused());
    EXPECT_EQ(pause->text(), u"&Continue"_s);
    EXPECT_TRUE(waitUntil([this] { return panel()->windowTitle() == u"Kruv: 0 of 3, paused"; }))
        << panel()->windowTitle().toStdString();
    pause->click();
    EXPECT_FALSE(queue().isPaused());
    action("stopAfterRunning")->trigger();
    EXPECT_EQ(queue().taskCount(), 1);
    running->failWith(u"no room"_s);
    EXPECT_TRUE(waitUntil([&] { return enabled().isEmpty(); })) << enabled().toStdString();
}

} // namespace kruv::test
