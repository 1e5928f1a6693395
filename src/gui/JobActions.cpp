// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/JobActions.h"

#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <QAbstractItemView>
#include <QAction>
#include <QItemSelectionModel>
#include <QSet>

#include <algorithm>
#include <chrono>

namespace kruv {

namespace {
constexpr auto updateInterval = std::chrono::milliseconds(100);
}

JobActions::JobActions(KruvTaskQueue &queue)
    : m_queue(queue)
    , m_pause(add(tr("&Pause"), Qt::CTRL | Qt::SHIFT | Qt::Key_P, "pauseJobs", [this] { pauseOrGoOn(); }))
    , m_stopAfterRunning(add(tr("&Stop After the Running Ones"), Qt::CTRL | Qt::SHIFT | Qt::Key_S,
                             "stopAfterRunning",
                             [this] { m_queue.cancelWaiting(KruvTaskQueue::FollowUps::Come); }))
    , m_tryAgain(add(tr("&Try the Failed Again"), Qt::CTRL | Qt::SHIFT | Qt::Key_R, "tryFailedAgain",
                     [this] { m_queue.tryFailedAgain(); }))
{
    addSeparator();
    addMoves();
    m_updateSoon.setSingleShot(true);
    m_updateSoon.setInterval(updateInterval);
    connect(&m_updateSoon, &QTimer::timeout, this, &JobActions::update);
    const auto soon = [this] { m_updateSoon.start(); };
    connect(&queue, &KruvTaskQueue::pausedChanged, this, &JobActions::update);
    connect(&queue, &KruvTaskQueue::tasksAdded, this, soon);
    connect(&queue, &KruvTaskQueue::taskStarted, this, soon);
    connect(&queue, &KruvTaskQueue::taskEnded, this, soon);
    connect(&queue, &KruvTaskQueue::becameIdle, this, soon);
    connect(&queue.panelArray(), &QAbstractItemModel::rowsInserted, this, soon);
    connect(&queue.panelArray(), &QAbstractItemModel::rowsMoved, this, soon);
    connect(&queue.panelArray(), &QAbstractItemModel::layoutChanged, this, soon);
    connect(&queue.panelArray(), &QAbstractItemModel::modelReset, this, soon);
    update();
}

void JobActions::addMoves()
{
    using Move = KruvTaskQueue::Move;
    const auto move = [this](Move where) {
        Selected jobs = selected();
        if (where == Move::Down) {
            std::ranges::reverse(jobs); // so that they keep their order among themselves
        }
        QSet<const KruvTask *> staying; // none of the others passes one of them
        for (const auto &job : jobs) {
            const KruvTask *const place = m_queue.placeFor(*job, where);
            if (!place || staying.contains(place)) {
                staying.insert(job.get());
            } else {
                m_queue.move(*job, where);
            }
        }
        m_view->scrollTo(m_view->currentIndex());
    };
    m_first = add(tr("Move &First"), Qt::ALT | Qt::Key_Home, "moveFirst", [this] {
        m_queue.moveFirst(selected());
        m_view->scrollTo(m_view->currentIndex());
    });
    m_up = add(tr("Move &Up"), Qt::ALT | Qt::Key_Up, "moveUp", [move] { move(Move::Up); });
    m_down = add(tr("Move &Down"), Qt::ALT | Qt::Key_Down, "moveDown", [move] { move(Move::Down); });
    m_remove = add(tr("&Remove from the Queue"), Qt::CTRL | Qt::Key_Delete, "removeFromQueue", [this] {
        for (const auto &job : selected()) {
            m_queue.remove(*job);
        }
    });
}

QAction *JobActions::add(const QString &text, const QKeySequence &key, const char *name,
                         const std::function<void()> &act)
{
    auto *action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    connect(action, &QAction::triggered, this, act);
    m_all.append(action);
    return action;
}

void JobActions::addSeparator()
{
    auto *separator = new QAction(this);
    separator->setSeparator(true);
    m_all.append(separator);
}

void JobActions::setView(QAbstractItemView *view)
{
    m_view = view;
    connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this] { m_updateSoon.start(); });
    update();
}

JobActions::Selected JobActions::selected() const
{
    if (!m_view) {
        return {};
    }
    QModelIndexList rows = m_view->selectionModel()->selectedIndexes();
    std::sort(rows.begin(), rows.end()); // NOLINT: an index has no more than a less
    Selected jobs;
    for (const QModelIndex &row : std::as_const(rows)) {
        jobs.push_back(m_queue.panelArray().task(row.row()).shared_from_this());
    }
    return jobs;
}

void JobActions::pauseOrGoOn()
{
    if (m_queue.isPaused()) {
        m_queue.goOn();
    } else {
        m_queue.pause();
    }
}

void JobActions::update()
{
    using Move = KruvTaskQueue::Move;
    const Selected jobs = selected();
    const auto any = [&jobs](const auto &holds) {
        return std::ranges::any_of(jobs, [&](const auto &job) { return holds(*job); });
    };
    const auto anyCan = [&](Move where) {
        return any([&](const KruvTask &job) { return m_queue.placeFor(job, where) != nullptr; });
    };
    m_pause->setText(m_queue.isPaused() ? tr("&Continue") : tr("&Pause"));
    m_pause->setEnabled(m_queue.taskCount() > 0);
    m_stopAfterRunning->setEnabled(m_queue.hasWaiting());
    m_tryAgain->setEnabled(m_queue.canTryFailedAgain());
    m_first->setEnabled(anyCan(Move::First));
    m_up->setEnabled(anyCan(Move::Up));
    m_down->setEnabled(anyCan(Move::Down));
    m_remove->setEnabled(any([this](const KruvTask &job) { return m_queue.isWaiting(job); }));
}

} // namespace kruv
