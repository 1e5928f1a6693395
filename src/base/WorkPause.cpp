// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/WorkPause.h"

#include <utility>

namespace kruv {

void WorkPause::set(bool on)
{
    const std::lock_guard lock(m_lock);
    if (m_on.exchange(on) != on) {
        for (const auto &tell : m_listeners) {
            tell(on);
        }
        m_changed.notify_all();
    }
}

void WorkPause::wait(const std::stop_token &unwanted)
{
    if (m_on) {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, unwanted, [this] { return !m_on; });
    }
}

WorkPause::Listener::Listener(WorkPause *pause, std::function<void(bool on)> tell)
    : m_pause(pause)
{
    if (m_pause) {
        const std::lock_guard lock(m_pause->m_lock);
        m_place = m_pause->m_listeners.insert(m_pause->m_listeners.end(), std::move(tell));
        if (m_pause->m_on) {
            (*m_place)(true);
        }
    }
}

WorkPause::Listener::~Listener()
{
    if (m_pause) {
        const std::lock_guard lock(m_pause->m_lock);
        m_pause->m_listeners.erase(m_place);
    }
}

} // namespace kruv
