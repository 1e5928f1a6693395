// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <atomic>
#include <sys/types.h>

namespace kruv {

/// A running tool in the table that a process beside the program reads. When the program dies, the system
/// ends the tools that it started itself; that process ends what those had started, by the tools' sessions.
/// It is started with the first tool, and costs the further ones nothing. Without it (the resources folder
/// lacks the adapters) nothing is watched.
class WatchedTool
{
public:
    WatchedTool();
    ~WatchedTool() { end(); }
    WatchedTool(const WatchedTool &) = delete;
    WatchedTool &operator=(const WatchedTool &) = delete;

    /// `leader` is the leader of the tool's session. Called by the child that becomes the tool, which shares
    /// the memory: so nothing is missed that the tool starts.
    void begin(pid_t leader);
    /// Before the leader's number can be given to another process.
    void end();

private:
    std::atomic<pid_t> *m_place; // or null
};

} // namespace kruv
