// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkClock.h"

#include <QObject>
#include <QSet>
#include <QTimer>

namespace kruv {

class KruvTask;
class KruvTaskQueue;

/// How far the queue's current busy period is: jobs ended and submitted, and the time left.
class QueueProgress : public QObject
{
    Q_OBJECT
public:
    /// `queue` must outlive this.
    QueueProgress(KruvTaskQueue &queue, QObject *parent);

    bool isBusy() const { return m_busy; }
    int ended() const { return m_ended; }
    int all() const;
    /// 0.0 to 1.0, running jobs counted by their own progress.
    double fraction() const;
    /// "3 of 48, about 2 minutes left", "3 of 48, paused"; empty while nothing runs.
    QString text() const;

Q_SIGNALS:
    /// At most a few times a second while busy, and when a busy period begins and ends.
    void changed();

private:
    void taskStarted(kruv::KruvTask &task);
    void taskEnded(kruv::KruvTask &task);
    void becameIdle();
    void pausedChanged(bool paused);

    KruvTaskQueue &m_queue;
    QTimer m_tick;
    WorkClock m_clock;
    QSet<const KruvTask *> m_running;
    int m_ended = 0;
    bool m_busy = false;
};

} // namespace kruv
