// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/StatusPanel.h"

#include "base/Preferences.h"
#include "gui/JobActions.h"
#include "gui/QueueProgress.h"
#include "gui/Spacing.h"
#include "gui/StatusQueueCell.h"
#include "gui/WindowPlace.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QScreen>

#include <algorithm>

namespace kruv {

namespace {
const QString placeKey = QStringLiteral("statusPanelPlace");
constexpr QSize firstPanelSize(420, 360);
} // namespace

StatusPanel::StatusPanel(KruvTaskQueue &queue, QueueProgress &progress, JobActions &actions,
                         Preferences &preferences, QWidget *beside)
    : QWidget(nullptr, Qt::Window)
    , m_queue(queue)
    , m_progress(progress)
    , m_actions(actions)
    , m_preferences(preferences)
    , m_beside(beside)
    , m_table(new QListView(this))
    , m_text(new QLabel(this))
    , m_pause(new QPushButton(this))
    , m_stopAll(new QPushButton(tr("&Stop All"), this))
    , m_removeErrors(new QPushButton(tr("&Remove all errors"), this))
{
    setObjectName(QStringLiteral("statusPanel"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_AlwaysShowToolTips); // it is seldom the active window
    makeTable();
    makePauseButton();
    addActions(actions.all()); // for their keys
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_table, 1);
    layout->addLayout(makeBar());
    resize(firstPanelSize);
    m_showSoon.setSingleShot(true);
    connect(&m_showSoon, &QTimer::timeout, this, &StatusPanel::showProgress);
    const auto showSoon = [this] { m_showSoon.start(); };
    connect(&progress, &QueueProgress::changed, this, showSoon);
    connect(&queue.panelArray(), &QAbstractItemModel::modelReset, this, showSoon);
    connect(&queue.panelArray(), &QAbstractItemModel::rowsInserted, this, showSoon);
    showProgress();
}

void StatusPanel::makeTable()
{
    m_table->setObjectName(QStringLiteral("statusTable"));
    m_table->setAccessibleName(tr("Jobs"));
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->setModel(&m_queue.panelArray());
    auto *cell = new StatusQueueCell(m_table);
    m_table->setItemDelegate(cell);
    connect(&m_queue, &KruvTaskQueue::pausedChanged, cell, &StatusQueueCell::setPaused);
    cell->setPaused(m_queue.isPaused());
    m_table->setUniformItemSizes(true);
    m_table->setAlternatingRowColors(true);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    m_actions.setView(m_table);
    connect(m_table, &QListView::activated, this, &StatusPanel::showOutputOf);
    connect(m_table, &QWidget::customContextMenuRequested, this, &StatusPanel::showContextMenu);
}

void StatusPanel::makePauseButton()
{
    m_pause->setObjectName(QStringLiteral("pause"));
    QAction *action = m_actions.pause();
    connect(m_pause, &QPushButton::clicked, action, &QAction::trigger);
    const auto follow = [this, action] {
        m_pause->setText(action->text());
        m_pause->setEnabled(action->isEnabled());
        m_pause->setToolTip(m_queue.isPaused()
                                ? tr("Go on where the jobs stopped")
                                : tr("Let all jobs stand still; the machine may sleep meanwhile"));
    };
    connect(action, &QAction::changed, m_pause, follow);
    follow();
}

QLayout *StatusPanel::makeBar()
{
    m_text->setObjectName(QStringLiteral("statusText"));
    m_stopAll->setObjectName(QStringLiteral("stopAll"));
    m_stopAll->setToolTip(tr("Drop what waits and give up what runs; a job of a single tool may finish, a "
                             "second time ends it too"));
    m_removeErrors->setObjectName(QStringLiteral("removeErrors"));
    connect(m_stopAll, &QPushButton::clicked, &m_queue, &KruvTaskQueue::cancelAllTasks);
    connect(m_removeErrors, &QPushButton::clicked, &m_queue, &KruvTaskQueue::removeAllErrors);
    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(outerMargin, outerMargin / 2, outerMargin, outerMargin / 2);
    bar->addWidget(m_text, 1);
    bar->addSpacing(outerMargin / 2);
    bar->addWidget(m_removeErrors);
    bar->addWidget(m_pause);
    bar->addWidget(m_stopAll);
    return bar;
}

void StatusPanel::place()
{
    m_placed = true;
    if (WindowPlace::restore(*this, m_preferences, placeKey) || !m_beside) {
        return;
    }
    const QRect screen = m_beside->screen()->availableGeometry();
    const QRect other = m_beside->frameGeometry();
    QPoint corner(other.right() + outerMargin, other.top());
    if (corner.x() + width() > screen.right()) {
        // No room beside it: over its lower right corner.
        corner = {std::min(other.right() + outerMargin * 2, screen.right()) - width(),
                  std::min(other.bottom() + outerMargin * 2, screen.bottom()) - height()};
    }
    move(corner);
}

void StatusPanel::bringToFront()
{
    if (!m_placed) {
        place();
    }
    if (!isVisible()) {
        show();
    }
    // Not over a question that waits for its answer.
    if (!QApplication::activeModalWidget()) {
        raise();
    }
}

void StatusPanel::scrollTo(int row)
{
    m_table->scrollTo(m_queue.panelArray().index(row), QAbstractItemView::EnsureVisible);
}

void StatusPanel::hideEvent(QHideEvent *event)
{
    WindowPlace::store(*this, m_preferences, placeKey);
    QWidget::hideEvent(event);
}

void StatusPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        cancelSelected();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QWidget::keyPressEvent(event);
    }
}

/// What has not begun leaves the queue.
void StatusPanel::cancelSelected()
{
    for (const std::shared_ptr<KruvTask> &task : m_actions.selected()) {
        if (m_queue.isWaiting(*task)) {
            m_queue.remove(*task);
        } else {
            task->cancelTask();
        }
    }
    m_table->viewport()->update();
}

void StatusPanel::showOutputOf(const QModelIndex &index)
{
    const KruvTask &task = m_queue.panelArray().task(index.row());
    if (task.error()) {
        Q_EMIT outputWanted(task.results()->results(task), task.title());
    }
}

bool StatusPanel::mayRemoveRows() const
{
    const StatusTableModel &rows = m_queue.panelArray();
    return rows.hasErrors() || (!m_progress.isBusy() && !rows.isEmpty());
}

void StatusPanel::showProgress()
{
    const QString progress = m_progress.text();
    const bool errors = m_queue.panelArray().hasErrors();
    const bool mayRemove = mayRemoveRows();
    setWindowTitle(progress.isEmpty() ? tr("Kruv tasks") : tr("Kruv: %1").arg(progress));
    if (m_progress.isBusy()) {
        m_text->setText(progress);
    } else {
        m_text->setText(errors      ? tr("Some jobs failed")
                        : mayRemove ? tr("Some jobs have remarks")
                                    : tr("Nothing to do"));
    }
    m_stopAll->setEnabled(m_progress.isBusy());
    m_removeErrors->setText(errors ? tr("&Remove all errors") : tr("&Remove all remarks"));
    m_removeErrors->setVisible(mayRemove);
}

void StatusPanel::showContextMenu(const QPoint &position)
{
    QMenu menu(this);
    menu.setObjectName(QStringLiteral("removeErrorsMenu"));
    menu.addActions(m_actions.all());
    menu.addSeparator();
    QAction *remove = menu.addAction(QString(m_removeErrors->text()).remove(u'&'), &m_queue,
                                     &KruvTaskQueue::removeAllErrors);
    remove->setEnabled(mayRemoveRows());
    menu.exec(m_table->viewport()->mapToGlobal(position));
}

} // namespace kruv
