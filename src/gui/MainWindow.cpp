// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/MainWindow.h"

#include "base/Preferences.h"
#include "gui/GuiUserInterface.h"
#include "gui/HistoryWindow.h"
#include "gui/JobActions.h"
#include "gui/StatusPanel.h"
#include "gui/StatusPanelController.h"
#include "gui/TabView.h"
#include "gui/TabViews.h"
#include "gui/TagsTabView.h"
#include "gui/TrackNameInputWindow.h"
#include "gui/UndoAction.h"
#include "gui/WindowPlace.h"
#include "platform/MainThread.h"
#include "platform/SignalWatcher.h"
#include "tabs/KruvController.h"

#include <QCloseEvent>
#include <QMenuBar>
#include <QScopedValueRollback>
#include <QSessionManager>
#include <QTabBar>
#include <QTabWidget>

namespace kruv {

namespace {
const QString placeKey = QStringLiteral("mainWindowPlace");
const QString tabKey = QStringLiteral("selectedTab");
constexpr QSize firstWindowSize(900, 600);
constexpr QSize leastSize(640, 420);
} // namespace

MainWindow::MainWindow(KruvController &controller, GuiUserInterface &userInterface)
    : m_controller(controller)
    , m_userInterface(userInterface)
    , m_tabView(new QTabWidget(this))
{
    setWindowTitle(QStringLiteral("Kruv"));
    setObjectName(QStringLiteral("mainWindow"));
    setMinimumSize(leastSize);
    resize(firstWindowSize);
    userInterface.attach(this, controller.taskQueue());
    makeTabs();
    makeMenus();
    new TrackNameInputWindow(m_controller.trackNameInputController(), this);
    restoreState();
}

MainWindow::~MainWindow() = default;

void MainWindow::makeTabs()
{
    m_tabView->setObjectName(QStringLiteral("tabView"));
    m_tabView->setDocumentMode(true);
    m_tabView->tabBar()->setExpanding(false);
    m_tabView->tabBar()->setAccessibleName(tr("Functions"));
    for (const QString &label : m_controller.tabLabels()) {
        m_tabView->addTab(makeTabView(label, m_controller, m_tabView), tabTitle(label));
    }
    setCentralWidget(m_tabView);
    connect(m_tabView, &QTabWidget::currentChanged, &m_controller, &KruvController::selectTab);
    connect(&m_controller, &KruvController::selectedTabChanged, m_tabView, &QTabWidget::setCurrentIndex);
}

void MainWindow::makeMenus()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Add Files…"), QKeySequence::Open, this,
                    [this] { actOnCurrentTab([](BaseTab &tab) { tab.addButtonClick(); }); });
    file->addAction(tr("&Clear List"), Qt::CTRL | Qt::Key_L, this,
                    [this] { actOnCurrentTab([](BaseTab &tab) { tab.clearButtonClick(); }); });
    QAction *run = file->addAction(tr("&Run"), this, [this] {
        if (auto *view = qobject_cast<TabView *>(m_tabView->currentWidget())) {
            view->runCommand();
        }
    });
    run->setShortcuts({Qt::CTRL | Qt::Key_Return, Qt::CTRL | Qt::Key_Enter});
    run->setAutoRepeat(false); // what is shown before it runs is to be seen
    makePlanAction(*file);
    file->addSeparator();
    QAction *preferences = file->addAction(tr("&Preferences…"), Qt::CTRL | Qt::Key_Comma, this,
                                           &MainWindow::showPreferencePanel);
    preferences->setMenuRole(QAction::PreferencesRole);
    file->addSeparator();
    QAction *quitAction = file->addAction(tr("&Quit"), Qt::CTRL | Qt::Key_Q, this, &MainWindow::quit);
    quitAction->setMenuRole(QAction::QuitRole);
    quitAction->setObjectName(QStringLiteral("quit"));
    makeEditMenu();
    makeTabMenu();
    if (auto *tags = m_tabView->findChild<TagsTabView *>()) {
        tags->fillMenu(menuBar()->addMenu(tr("&Tags")), [this] { selectTab(QStringLiteral("Tags")); });
    }
    makeJobMenu();
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    QAction *about = help->addAction(tr("&About Kruv"), this, [this] { selectTab(QStringLiteral("about")); });
    about->setMenuRole(QAction::AboutRole);
}

void MainWindow::makePlanAction(QMenu &menu)
{
    QAction *plan = menu.addAction(tr("Show &Plan…"), this, [this] {
        if (auto *view = qobject_cast<TabView *>(m_tabView->currentWidget())) {
            view->showPlan();
        }
    });
    plan->setObjectName(QStringLiteral("showPlan"));
    plan->setShortcuts({Qt::CTRL | Qt::SHIFT | Qt::Key_Return, Qt::CTRL | Qt::SHIFT | Qt::Key_Enter});
    const auto refresh = [this, plan] {
        const auto *view = qobject_cast<TabView *>(m_tabView->currentWidget());
        plan->setEnabled(view && view->canShowPlan());
    };
    connect(&menu, &QMenu::aboutToShow, plan, refresh);
    connect(&menu, &QMenu::aboutToHide, plan, [plan] { plan->setEnabled(true); }); // its keys work
}

void MainWindow::makeEditMenu()
{
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    m_undo = new UndoAction(m_controller, m_userInterface, this);
    edit->addAction(m_undo);
    connect(edit, &QMenu::aboutToShow, m_undo, &UndoAction::refresh);
    connect(edit, &QMenu::aboutToHide, m_undo, [this] { m_undo->setEnabled(true); }); // its keys work
}

void MainWindow::makeTabMenu()
{
    constexpr int mostNumbered = 9;
    QMenu *view = menuBar()->addMenu(tr("&View"));
    for (int index = 0; index < m_tabView->count(); ++index) {
        QAction *action = view->addAction(m_tabView->tabText(index), this,
                                          [this, index] { m_controller.selectTab(index); });
        if (index < mostNumbered) {
            action->setShortcut(static_cast<Qt::Key>(Qt::Key_1 + index) | Qt::CTRL);
        }
    }
    view->addSeparator();
    QAction *history = view->addAction(tr("&History"), Qt::CTRL | Qt::Key_H, this, [this] { showHistory(); });
    history->setObjectName(QStringLiteral("history"));
}

void MainWindow::makeJobMenu()
{
    QMenu *jobs = menuBar()->addMenu(tr("&Jobs"));
    jobs->setObjectName(QStringLiteral("jobsMenu"));
    jobs->addActions(m_userInterface.jobActions()->all());
    jobs->addSeparator();
    jobs->addAction(tr("S&how Jobs"), Qt::CTRL | Qt::Key_T, this,
                    [this] { m_userInterface.statusPanel()->bringToFront(); });
}

void MainWindow::restoreState()
{
    const Preferences &preferences = m_controller.preferences();
    WindowPlace::restore(*this, preferences, placeKey);
    m_controller.selectTab(0);
    selectTab(preferences.string(tabKey));
}

void MainWindow::storeState()
{
    WindowPlace::store(*this, m_controller.preferences(), placeKey);
    m_controller.preferences().setValue(tabKey, m_controller.tabLabels().value(m_tabView->currentIndex()));
}

void MainWindow::selectTab(const QString &label)
{
    if (const auto index = m_controller.tabLabels().indexOf(label); index >= 0) {
        m_controller.selectTab(static_cast<int>(index));
    }
}

void MainWindow::actOnCurrentTab(void (*action)(BaseTab &tab))
{
    if (BaseTab *tab = m_controller.tab(m_controller.tabLabels().value(m_tabView->currentIndex()))) {
        action(*tab);
    }
}

void MainWindow::showPreferencePanel()
{
    if (!m_preferencesController) {
        m_preferencesController =
            std::make_unique<PreferencesController>(m_controller.preferences(), nullptr);
        m_preferencesController->move(geometry().center() - m_preferencesController->rect().center());
    }
    m_preferencesController->show();
    m_preferencesController->raise();
    m_preferencesController->activateWindow();
}

void MainWindow::showHistory(std::optional<std::int64_t> run)
{
    if (!m_historyWindow) {
        m_historyWindow = std::make_unique<HistoryWindow>(m_controller);
        connect(m_historyWindow.get(), &HistoryWindow::undoWanted, m_undo, &UndoAction::undo);
    }
    m_historyWindow->showRun(run);
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    event->ignore();
    if (m_asking || m_quitting) {
        return;
    }
    if (m_sessionEnds) {
        quitWithoutAsking();
        return;
    }
    if (m_controller.taskQueue().taskCount() > 0) {
        quit(); // which asks
        return;
    }
    const QScopedValueRollback asking(m_asking, true);
    if (m_controller.windowShouldClose()) {
        endApplication();
    }
}

void MainWindow::quit()
{
    if (m_quitting) {
        m_controller.taskQueue().cancelAllTasks();
        return;
    }
    if (m_asking) {
        return;
    }
    const QScopedValueRollback asking(m_asking, true);
    if (m_controller.applicationShouldTerminate()) {
        endApplication();
    }
}

void MainWindow::quitWithoutAsking()
{
    if (m_quitting) {
        Q_EMIT readyToEnd();
        return;
    }
    endApplication();
    m_controller.taskQueue().cancelAllTasks();
}

void MainWindow::stopProcess()
{
    KruvTaskQueue &queue = m_controller.taskQueue();
    const bool goesOn = !queue.isPaused();
    queue.pause();
    m_controller.journal().waitUntilWritten(); // others would wait for it in vain
    SignalWatcher::stopProcess();
    if (goesOn) {
        queue.goOn();
    }
}

void MainWindow::commitData(QSessionManager &session)
{
    if (!m_asking && session.allowsInteraction()) {
        const QScopedValueRollback asking(m_asking, true);
        const bool mayEnd = m_controller.applicationShouldTerminate();
        session.release();
        if (!mayEnd) {
            session.cancel();
            return;
        }
    }
    storeState();
    m_sessionEnds = true;
}

void MainWindow::endApplication()
{
    m_quitting = true;
    Q_EMIT leaving();
    storeState();
    m_userInterface.leave();
    m_controller.runRecorder().breakOff();
    m_controller.applicationWillTerminate();
    if (m_controller.taskQueue().taskCount() > 0) {
        waitForJobs();
    } else {
        Q_EMIT readyToEnd();
    }
}

void MainWindow::waitForJobs()
{
    m_waitingPanel = std::make_unique<StatusPanelController>();
    m_waitingPanel->setText(tr("Waiting for running jobs to finish. Closing this window ends them now."));
    m_waitingPanel->show();
    connect(m_waitingPanel.get(), &StatusPanelController::closed, this, &MainWindow::quit);
    connect(&m_controller.taskQueue(), &KruvTaskQueue::taskEnded, this, [this] {
        MainThread::post([this] {
            if (m_controller.taskQueue().taskCount() == 0) {
                m_waitingPanel->hide();
                Q_EMIT readyToEnd();
            }
        });
    });
}

} // namespace kruv
