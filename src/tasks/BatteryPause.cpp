// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/BatteryPause.h"

#include "base/Preferences.h"
#include "tasks/KruvTaskQueue.h"

namespace kruv {

BatteryPause::BatteryPause(KruvTaskQueue &queue)
    : m_queue(queue)
{
    connect(&queue, &KruvTaskQueue::pausedChanged, this, &BatteryPause::pausedChanged);
    m_decideSoon.setSingleShot(true);
    connect(&m_decideSoon, &QTimer::timeout, this, &BatteryPause::decide);
    connect(&queue, &KruvTaskQueue::taskStarted, this, [this] { m_decideSoon.start(); });
}

void BatteryPause::setOnBattery(bool onBattery)
{
    m_onBattery = onBattery;
    if (!onBattery) {
        m_overruled = false;
        if (m_isOurs) {
            m_queue.goOn();
        }
    }
    decide();
}

void BatteryPause::decide()
{
    if (m_onBattery && !m_overruled && !m_queue.isPaused() && m_queue.taskCount() > 0 &&
        m_queue.preferences().boolean(QStringLiteral("pauseOnBattery"))) {
        m_queue.pause();
        m_isOurs = true;
        Q_EMIT paused();
    }
}

void BatteryPause::pausedChanged(bool paused)
{
    m_overruled = m_overruled || (!paused && m_isOurs && m_onBattery && m_queue.taskCount() > 0);
    m_isOurs = false;
}

} // namespace kruv
