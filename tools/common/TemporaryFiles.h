// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kruv::tools {

/// Unfinished files that must not outlive the process. They are removed when SIGTERM, SIGINT or SIGHUP ends
/// it (a signal that was ignored at the start stays ignored).
class TemporaryFiles
{
public:
    /// Makes a private file whose name ends in six random characters where path ends in XXXXXX, which it
    /// fills in; path must then stay alive and unchanged until forget(). Returns the descriptor, or -1 with
    /// errno set. Throws ToolError when more than 64 are open at a time.
    static int create(std::string &path);
    static void forget(const std::string &path);

private:
    static void remember(const std::string &path);
};

} // namespace kruv::tools
