// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolStop.h"

#include <utility>

namespace kruv {

namespace {
thread_local std::stop_token ofThread;
}

ToolStop::ToolStop(std::stop_token stop)
    : m_before(std::exchange(ofThread, std::move(stop)))
{
}

ToolStop::~ToolStop()
{
    ofThread = m_before;
}

std::stop_token ToolStop::current()
{
    return ofThread;
}

} // namespace kruv
