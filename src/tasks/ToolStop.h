// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <stop_token>

namespace kruv {

/// As long as it lives, `stop` ends the tools that this thread runs by NSTaskWrapperSync, however deep in
/// helpers that know of no job. For work on files that nobody misses where a tool is ended halfway.
class ToolStop
{
public:
    explicit ToolStop(std::stop_token stop);
    ~ToolStop();
    ToolStop(const ToolStop &) = delete;
    ToolStop &operator=(const ToolStop &) = delete;

    /// That of this thread; one that never stops where there is none.
    static std::stop_token current();

private:
    const std::stop_token m_before;
};

} // namespace kruv
