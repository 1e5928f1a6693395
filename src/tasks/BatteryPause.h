// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>
#include <QTimer>

namespace kruv {

class KruvTaskQueue;

/// Pauses the queue while the machine runs on its battery, where the preference says so. A person who goes on
/// all the same is not asked again until the machine was plugged in. Main thread.
class BatteryPause : public QObject
{
    Q_OBJECT
public:
    /// `queue` must outlive it.
    explicit BatteryPause(KruvTaskQueue &queue);

    void setOnBattery(bool onBattery);

Q_SIGNALS:
    /// The queue was paused for that.
    void paused();

private:
    void decide();
    void pausedChanged(bool paused);

    KruvTaskQueue &m_queue;
    QTimer m_decideSoon;
    bool m_onBattery = false;
    bool m_isOurs = false;    // the pause that is on
    bool m_overruled = false; // by a person who went on
};

} // namespace kruv
