// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

// What a person does to a queue that has begun.

#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>

namespace kruv {

void KruvTaskQueue::cancelAllTasks()
{
    cancel(m_taskArray.all());
    if (isPaused()) {
        goOn(); // what is as good as done ends
    }
}

int KruvTaskQueue::cancelWaiting(FollowUps followUps)
{
    const std::vector<std::shared_ptr<KruvTask>> tasks = m_taskArray.waiting();
    m_quitting = m_quitting || (followUps == FollowUps::Refused && !tasks.empty());
    cancel(tasks);
    return static_cast<int>(tasks.size());
}

void KruvTaskQueue::cancel(const std::vector<std::shared_ptr<KruvTask>> &tasks)
{
    m_cancellingAll = true;
    std::for_each(tasks.rbegin(), tasks.rend(), [](const auto &task) { task->cancelTask(); });
    m_cancellingAll = false;
    fillFreePlaces(); // with the follow-up jobs of the sets that have ended
    if (!isBusy() && !tasks.empty()) {
        endBusyPeriod();
    }
}

void KruvTaskQueue::killAllTasks()
{
    m_quitting = true;
    cancelAllTasks();
}

bool KruvTaskQueue::isWaiting(const KruvTask &task) const
{
    const QueuedJobs::Entry *const entry = m_taskArray.find(task);
    return entry && entry->waits();
}

void KruvTaskQueue::move(const KruvTask &task, Move where)
{
    if (const KruvTask *const place = m_taskArray.placeFor(task, where)) {
        const std::lock_guard lock(m_lock);
        const int row = m_panelArray.rowOf(*place);
        m_taskArray.move(task, where);
        m_panelArray.move(m_panelArray.rowOf(task), row);
    }
}

void KruvTaskQueue::moveFirst(const std::vector<std::shared_ptr<KruvTask>> &tasks)
{
    const std::lock_guard lock(m_lock);
    for (auto task = tasks.rbegin(); task != tasks.rend(); ++task) {
        m_taskArray.move(**task, Move::First);
    }
    m_panelArray.arrange(m_taskArray.waiting());
}

void KruvTaskQueue::remove(KruvTask &task)
{
    if (isWaiting(task)) {
        const std::shared_ptr<KruvTask> keptAlive = task.shared_from_this();
        m_panelArray.remove(task);
        task.withdraw();
    }
}

bool KruvTaskQueue::canTryFailedAgain() const
{
    for (int row = 0; row < m_panelArray.rowCount(); ++row) {
        if (m_panelArray.task(row).canBeTriedAgain()) {
            return true;
        }
    }
    return false;
}

void KruvTaskQueue::tryFailedAgain()
{
    std::vector<std::shared_ptr<KruvTask>> failed;
    for (int row = 0; row < m_panelArray.rowCount() && !m_quitting; ++row) {
        if (KruvTask &task = m_panelArray.task(row); task.canBeTriedAgain()) {
            failed.push_back(task.shared_from_this());
        }
    }
    for (const std::shared_ptr<KruvTask> &task : failed) {
        if (const std::shared_ptr<KruvTask> again = task->madeAgain()) {
            Q_EMIT triedAgain(*again, *task);
            m_panelArray.remove(*task);
            enqueue(again);
        }
    }
}

void KruvTaskQueue::pause()
{
    if (taskCount() > 0) {
        setPaused(true);
        allowSleep();
    }
}

void KruvTaskQueue::goOn()
{
    setPaused(false);
    if (taskCount() > 0) {
        preventSleep();
    }
    const std::lock_guard lock(m_lock);
    fillFreePlaces();
}

void KruvTaskQueue::setPaused(bool paused)
{
    if (isPaused() != paused) {
        m_workPause.set(paused);
        Q_EMIT pausedChanged(paused);
    }
}

} // namespace kruv
