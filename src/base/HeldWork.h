// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <stop_token>

namespace kruv {

class WorkPause;

/// As long as it lives, this thread works for a job that can be paused, however deep in helpers that know of
/// no job.
class HeldWork
{
public:
    /// `pause` may be null. Work that is `unwanted` is not held, so that it can end.
    HeldWork(WorkPause *pause, std::stop_token unwanted);
    /// A part of the work that another thread does; null where that is not held.
    explicit HeldWork(const HeldWork *other);
    ~HeldWork();
    HeldWork(const HeldWork &) = delete;
    HeldWork &operator=(const HeldWork &) = delete;

    /// That of this thread, or null.
    static const HeldWork *current();
    /// What pauses this thread's work, or null.
    static WorkPause *pause();
    /// Called between two blocks of work: returns at once, or when a pause is over.
    static void wait();

private:
    WorkPause *const m_pause;
    const std::stop_token m_unwanted;
    const HeldWork *const m_before;
};

} // namespace kruv
