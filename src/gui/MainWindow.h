// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "gui/PreferencesController.h"

#include <QMainWindow>

#include <cstdint>
#include <memory>
#include <optional>

class QMenu;
class QSessionManager;
class QTabWidget;

namespace kruv {

class BaseTab;
class GuiUserInterface;
class HistoryWindow;
class KruvController;
class StatusPanelController;
class UndoAction;

/// The program's window: one tab per function, and the menus.
class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    /// Both must outlive the window.
    MainWindow(KruvController &controller, GuiUserInterface &userInterface);
    ~MainWindow() override;

    /// Selects the tab with that label; an unknown one changes nothing.
    void selectTab(const QString &label);

    void showPreferencePanel();
    /// With that run selected, where one is given.
    void showHistory(std::optional<std::int64_t> run = {});
    /// Asks what has to be asked and quits. Once quitting has begun, a further call ends the tools that are
    /// still being waited for.
    void quit();
    /// Quits for whoever can't be asked: a signal, the end of the session. Jobs are cancelled and their tools
    /// told to end; a second call doesn't wait for them.
    void quitWithoutAsking();
    /// Ctrl-Z in the terminal that the program was started from: its tools stand still with it.
    void stopProcess();
    /// The session is about to end: asks, where jobs would be lost and asking is possible, whether it may.
    void commitData(QSessionManager &session);

Q_SIGNALS:
    /// It quits for good, though jobs may still have to be waited for.
    void leaving();
    /// Every job has ended: the program may end now.
    void readyToEnd();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void makeTabs();
    void makeMenus();
    void makePlanAction(QMenu &menu);
    void makeEditMenu();
    void makeTabMenu();
    void makeJobMenu();
    void restoreState();
    void storeState();
    void endApplication();
    void waitForJobs();
    void actOnCurrentTab(void (*action)(BaseTab &tab));

    KruvController &m_controller;
    GuiUserInterface &m_userInterface;
    QTabWidget *m_tabView;
    std::unique_ptr<PreferencesController> m_preferencesController;
    std::unique_ptr<StatusPanelController> m_waitingPanel;
    UndoAction *m_undo = nullptr;
    std::unique_ptr<HistoryWindow> m_historyWindow;
    bool m_asking = false;
    bool m_quitting = false;
    bool m_sessionEnds = false;
};

} // namespace kruv
