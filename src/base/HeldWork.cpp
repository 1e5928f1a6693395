// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/HeldWork.h"

#include "base/WorkPause.h"

#include <utility>

namespace kruv {

namespace {
thread_local const HeldWork *workOfThread = nullptr;
}

HeldWork::HeldWork(WorkPause *pause, std::stop_token unwanted)
    : m_pause(pause)
    , m_unwanted(std::move(unwanted))
    , m_before(std::exchange(workOfThread, this))
{
}

HeldWork::HeldWork(const HeldWork *other)
    : HeldWork(other ? other->m_pause : nullptr, other ? other->m_unwanted : std::stop_token())
{
}

HeldWork::~HeldWork()
{
    workOfThread = m_before;
}

const HeldWork *HeldWork::current()
{
    return workOfThread;
}

WorkPause *HeldWork::pause()
{
    return workOfThread ? workOfThread->m_pause : nullptr;
}

void HeldWork::wait()
{
    if (WorkPause *const pause = HeldWork::pause()) {
        pause->wait(workOfThread->m_unwanted);
    }
}

} // namespace kruv
