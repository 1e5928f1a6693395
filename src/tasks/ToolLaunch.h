// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/WatchedTool.h"

#include <string>
#include <sys/types.h>
#include <vector>

namespace kruv {

/// The bytes that a tool is started with.
struct ToolLaunch
{
    std::string program;
    std::vector<std::string> arguments; // without the program's own name
    std::vector<std::string> environment;
    std::string folder; // empty: inherited
    int output = -1;    // takes both output streams
    WatchedTool *watched = nullptr;

    struct Started
    {
        pid_t process = 0;
        /// Why there is none; errno and, where it was not the program's, what could not be had.
        int error = 0;
        std::string what;
    };

    /// Starts it: leader of a session of its own, reads nothing, dies with the calling thread.
    Started start() const;
};

} // namespace kruv
