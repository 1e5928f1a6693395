// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <functional>
#include <memory>
#include <stop_token>

namespace kruv {

/// Work that its owner hands to the background pool, and whose outcome comes back to the main thread unless
/// the owner abandoned it or is gone by then. Main thread only; the destructor asks the work to stop and
/// waits for it.
class BackgroundWork
{
public:
    using Outcome = std::function<void()>;
    /// Runs on the pool, may end early when asked to stop, and returns what the main thread is to do then.
    using Work = std::function<Outcome(std::stop_token stop)>;

    BackgroundWork();
    ~BackgroundWork();
    BackgroundWork(const BackgroundWork &) = delete;
    BackgroundWork &operator=(const BackgroundWork &) = delete;

    void start(Work work);
    /// Asks all work to stop and drops its outcomes.
    void abandon();

private:
    class Running;

    std::shared_ptr<Running> m_running;
    std::stop_source m_stop;
};

} // namespace kruv
