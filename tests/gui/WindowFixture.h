// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/Preferences.h"
#include "gui/GuiUserInterface.h"
#include "gui/MainWindow.h"
#include "gui/StatusPanel.h"
#include "support/Files.h"
#include "support/QtPrinters.h"
#include "support/Wait.h"
#include "tabs/KruvController.h"

#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>
#include <QTreeView>

#include <gtest/gtest.h>
#include <memory>

namespace kruv::test {

/// The whole program's window in a temporary folder, and a person who uses it.
class WindowTest : public testing::Test
{
protected:
    struct Question
    {
        QString title;
        QString text;
        QStringList buttons;
        QString defaultButton;
    };

    WindowTest();
    ~WindowTest() override;

    QWidget *page(const QString &label) const;
    template <typename Widget> Widget *find(QWidget *where, const char *objectName) const
    {
        auto *found = where->findChild<Widget *>(QString::fromLatin1(objectName));
        EXPECT_NE(found, nullptr) << objectName;
        return found;
    }
    QTreeView *fileList(const QString &label) const { return find<QTreeView>(page(label), "fileList"); }

    /// Lets files go over a tab's page and waits until they are in.
    void drop(const QString &label, const QStringList &paths);
    void click(const QString &label, const char *button);
    void toggle(const QString &label, const char *box);

    /// Presses that button of the next question and keeps what it said.
    void answerQuestion(const QString &button);
    /// Chooses that path in the next file dialog.
    void answerFileDialog(const QString &path);
    /// Does `act` with the next modal window.
    void withNextDialog(std::function<void(QWidget *dialog)> act);

    [[nodiscard]] bool waitForJobs();
    void addTask(std::shared_ptr<KruvTask> task) { controller.taskQueue().addTask(std::move(task)); }
    KruvTaskQueue &queue() { return controller.taskQueue(); }
    StatusPanel *panel() { return userInterface.statusPanel(); }

    TemporaryFolder folder;
    Preferences preferences;
    GuiUserInterface userInterface;
    KruvController controller;
    std::unique_ptr<MainWindow> window;
    std::vector<Question> questions;
    int pendingAnswers = 0;
};

} // namespace kruv::test
