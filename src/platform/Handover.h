// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <deque>
#include <functional>
#include <mutex>

namespace kruv {

/// Pieces of work on their way from one thread to another, in order. Handing them over under a lock of our
/// own, with only a wake-up left to the framework, keeps the order of memory between the two threads in plain
/// sight of the thread sanitizer, which can't look into a framework built without it.
class Handover
{
public:
    /// Leaves `work` and calls `wake`, which has the other side call takeAndRun() once.
    template <typename Wake> void put(std::function<void()> work, Wake wake)
    {
        const std::lock_guard lock(m_lock);
        m_work.push_back(std::move(work));
        wake();
    }

    /// Runs the oldest piece on the calling thread.
    void takeAndRun()
    {
        std::function<void()> work;
        {
            const std::lock_guard lock(m_lock);
            work = std::move(m_work.front());
            m_work.pop_front();
        }
        work();
    }

private:
    std::mutex m_lock;
    std::deque<std::function<void()>> m_work;
};

} // namespace kruv
