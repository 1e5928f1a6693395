// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QElapsedTimer>

namespace kruv {

/// The time that work took, without its pauses.
class WorkClock
{
public:
    void start()
    {
        m_before = 0;
        m_isHeld = false;
        m_timer.start();
    }
    void hold(bool held)
    {
        if (held == m_isHeld || !m_timer.isValid()) {
            return;
        }
        m_isHeld = held;
        if (held) {
            m_before += m_timer.nsecsElapsed();
        } else {
            m_timer.restart();
        }
    }
    double seconds() const
    {
        constexpr double inOne = 1e9; // nanoseconds
        const qint64 now = m_isHeld || !m_timer.isValid() ? 0 : m_timer.nsecsElapsed();
        return static_cast<double>(m_before + now) / inOne;
    }

private:
    QElapsedTimer m_timer;
    qint64 m_before = 0; // nanoseconds, up to the last pause
    bool m_isHeld = false;
};

} // namespace kruv
