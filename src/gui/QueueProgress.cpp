// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "gui/QueueProgress.h"

#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace kruv {

namespace {

/// In the one unit that a person would say it in.
QString duration(double seconds)
{
    constexpr double minute = 60.0;
    constexpr double hour = 3600.0;
    const auto whole = [](double value) { return std::max(1, static_cast<int>(std::lround(value))); };
    if (seconds < minute) {
        const int count = whole(seconds);
        return count == 1 ? QueueProgress::tr("1 second") : QueueProgress::tr("%n seconds", nullptr, count);
    }
    if (seconds < 1.5 * hour) {
        const int count = whole(seconds / minute);
        return count == 1 ? QueueProgress::tr("1 minute") : QueueProgress::tr("%n minutes", nullptr, count);
    }
    const int count = whole(seconds / hour);
    return count == 1 ? QueueProgress::tr("1 hour") : QueueProgress::tr("%n hours", nullptr, count);
}

} // namespace

QueueProgress::QueueProgress(KruvTaskQueue &queue, QObject *parent)
    : QObject(parent)
    , m_queue(queue)
{
    m_tick.setInterval(std::chrono::milliseconds(500));
    connect(&m_tick, &QTimer::timeout, this, &QueueProgress::changed);
    connect(&queue, &KruvTaskQueue::taskStarted, this, &QueueProgress::taskStarted);
    connect(&queue, &KruvTaskQueue::taskEnded, this, &QueueProgress::taskEnded);
    connect(&queue, &KruvTaskQueue::pausedChanged, this, &QueueProgress::pausedChanged);
    connect(&queue, &KruvTaskQueue::becameIdle, this, &QueueProgress::becameIdle);
}

void QueueProgress::taskStarted(KruvTask &task)
{
    m_running.insert(&task);
    if (!m_busy) {
        m_busy = true;
        m_ended = 0;
        m_clock.start();
        m_tick.start();
        Q_EMIT changed();
    }
}

void QueueProgress::taskEnded(KruvTask &task)
{
    m_running.remove(&task);
    m_ended += task.state().withdrawn() ? 0 : 1;
}

void QueueProgress::becameIdle()
{
    m_busy = false;
    m_running.clear();
    m_tick.stop();
    Q_EMIT changed();
}

void QueueProgress::pausedChanged(bool paused)
{
    m_clock.hold(paused);
    Q_EMIT changed();
}

int QueueProgress::all() const
{
    return m_ended + m_queue.taskCount();
}

double QueueProgress::fraction() const
{
    double finished = m_ended;
    for (const KruvTask *task : m_running) {
        const RowProgress &progress = task->progressIndicator();
        finished += progress.indeterminate ? 0.0 : std::clamp(progress.value, 0.0, 100.0) / 100.0;
    }
    return all() > 0 ? std::min(1.0, finished / all()) : 0.0;
}

QString QueueProgress::text() const
{
    if (!m_busy) {
        return {};
    }
    constexpr double tooEarlyToTell = 3.0; // seconds
    const double done = fraction();
    const double elapsed = m_clock.seconds();
    if (m_queue.isPaused()) {
        return tr("%1 of %2, paused").arg(QString::number(m_ended), QString::number(all()));
    }
    if (elapsed > tooEarlyToTell && done > 0.0) {
        return tr("%1 of %2, about %3 left")
            .arg(QString::number(m_ended), QString::number(all()), duration(elapsed / done * (1.0 - done)));
    }
    return tr("%1 of %2").arg(QString::number(m_ended), QString::number(all()));
}

} // namespace kruv
