// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/BackgroundWork.h"

#include "base/TaskPool.h"
#include "platform/MainThread.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace kruv {

/// How many pieces of work run now.
class BackgroundWork::Running
{
public:
    void begin()
    {
        const std::lock_guard lock(m_lock);
        ++m_count;
    }
    void end()
    {
        const std::lock_guard lock(m_lock);
        --m_count;
        m_changed.notify_all();
    }
    void waitForNone()
    {
        std::unique_lock lock(m_lock);
        m_changed.wait(lock, [this] { return m_count == 0; });
    }

private:
    std::mutex m_lock;
    std::condition_variable m_changed;
    int m_count = 0;
};

BackgroundWork::BackgroundWork()
    : m_running(std::make_shared<Running>())
{
}

BackgroundWork::~BackgroundWork()
{
    m_stop.request_stop();
    m_running->waitForNone();
}

void BackgroundWork::start(Work work)
{
    m_running->begin();
    TaskPool::start([running = m_running, stop = m_stop.get_token(), work = std::move(work)] {
        Outcome outcome = work(stop);
        MainThread::post([stop, outcome = std::move(outcome)] {
            if (!stop.stop_requested()) {
                outcome();
            }
        });
        running->end();
    });
}

void BackgroundWork::abandon()
{
    m_stop.request_stop();
    m_stop = std::stop_source();
}

} // namespace kruv
