// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <stop_token>

namespace kruv {

/// A pause of all work of a queue. Work in this process asks for it between two blocks (HeldWork); who runs
/// work elsewhere is told (Listener). Any thread.
class WorkPause
{
public:
    WorkPause() = default;
    WorkPause(const WorkPause &) = delete;
    WorkPause &operator=(const WorkPause &) = delete;

    /// When it returns, all listeners were told.
    void set(bool on);
    bool isOn() const { return m_on; }
    /// Returns when the pause is over, or the work is unwanted.
    void wait(const std::stop_token &unwanted);

    class Listener
    {
    public:
        /// `tell` is called on the thread that begins or ends the pause, and at once where it is on. It must
        /// not ask anything of the pause. Null: there is none.
        Listener(WorkPause *pause, std::function<void(bool on)> tell);
        /// From here on nothing is told.
        ~Listener();
        Listener(const Listener &) = delete;
        Listener &operator=(const Listener &) = delete;

    private:
        WorkPause *const m_pause;
        std::list<std::function<void(bool on)>>::iterator m_place;
    };

private:
    std::mutex m_lock;
    std::condition_variable_any m_changed;
    std::atomic<bool> m_on = false; // written with the lock held
    std::list<std::function<void(bool on)>> m_listeners;
};

} // namespace kruv
