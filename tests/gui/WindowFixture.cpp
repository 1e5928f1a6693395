// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/WindowFixture.h"

#include "support/Wait.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

namespace kruv::test {

WindowTest::WindowTest()
    : preferences(folder.file(QStringLiteral("kruv.conf")))
    , userInterface(preferences)
    , controller(preferences, userInterface, nullptr)
{
    controller.setIntakeInBackground(true);
    window = std::make_unique<MainWindow>(controller, userInterface);
    window->show();
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window.get())); // keys reach an active window only
}

WindowTest::~WindowTest()
{
    EXPECT_EQ(pendingAnswers, 0) << "a dialog that was expected never came";
    userInterface.leave();
    queue().killAllTasks();
    queue().cancelAllTasks();
    EXPECT_TRUE(waitForJobs());
    drainPool();
}

QWidget *WindowTest::page(const QString &label) const
{
    return window->findChild<QWidget *>(label);
}

void WindowTest::drop(const QString &label, const QStringList &paths)
{
    QMimeData dropped;
    QList<QUrl> urls;
    for (const QString &path : paths) {
        urls.append(QUrl::fromLocalFile(path));
    }
    dropped.setUrls(urls);
    const QPoint middle = page(label)->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page(label), &enter);
    ASSERT_TRUE(enter.isAccepted());
    QDropEvent letGo(middle, Qt::CopyAction, &dropped, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(page(label), &letGo);
    ASSERT_TRUE(letGo.isAccepted());
    drainPool();
    serveEvents();
}

void WindowTest::click(const QString &label, const char *button)
{
    window->selectTab(label);
    QTest::mouseClick(find<QPushButton>(page(label), button), Qt::LeftButton);
}

void WindowTest::toggle(const QString &label, const char *box)
{
    window->selectTab(label);
    auto *found = find<QAbstractButton>(page(label), box);
    QTest::mouseClick(found, Qt::LeftButton, Qt::NoModifier, QPoint(8, found->height() / 2));
}

void WindowTest::withNextDialog(std::function<void(QWidget *)> act)
{
    ++pendingAnswers;
    auto *poll = new QTimer(window.get());
    QObject::connect(poll, &QTimer::timeout, poll, [this, poll, act = std::move(act)] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (!dialog) {
            dialog = QApplication::activePopupWidget();
        }
        if (dialog && dialog->isVisible()) {
            poll->stop();
            poll->deleteLater();
            --pendingAnswers;
            act(dialog);
        }
    });
    poll->start(5);
}

void WindowTest::answerQuestion(const QString &button)
{
    withNextDialog([this, button](QWidget *dialog) {
        auto *box = qobject_cast<QMessageBox *>(dialog);
        ASSERT_NE(box, nullptr);
        Question question{box->text(), box->informativeText(), {}, box->defaultButton()->text()};
        QAbstractButton *pressed = nullptr;
        const QList<QAbstractButton *> buttons = box->buttons();
        for (QAbstractButton *each : buttons) {
            question.buttons.append(each->text());
            pressed = each->text() == button ? each : pressed;
        }
        question.buttons.sort();
        questions.push_back(question);
        ASSERT_NE(pressed, nullptr) << button.toStdString();
        QTest::mouseClick(pressed, Qt::LeftButton);
    });
}

void WindowTest::answerFileDialog(const QString &path)
{
    withNextDialog([path](QWidget *dialog) {
        auto *chooser = qobject_cast<QFileDialog *>(dialog);
        ASSERT_NE(chooser, nullptr);
        auto *name = chooser->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        ASSERT_NE(name, nullptr);
        name->setText(path);
        QTest::keyClick(name, Qt::Key_Return);
    });
}

bool WindowTest::waitForJobs()
{
    const bool ended = waitUntil([this] { return queue().taskCount() == 0; });
    drainPool();
    serveEvents();
    return ended;
}

} // namespace kruv::test
