// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "TextReplacer.h"

namespace kruv::adapters {

/// What to run as a child.
struct ChildCommand
{
    std::string program; // full path
    std::string name;    // argv[0], which the tool's messages begin with
    Arguments arguments;
    std::string workingFolder;             // empty: as it is
    std::vector<Replacement> replacements; // in what it prints; none: its output goes its own way
    std::string failureWords = {};         // printed, they make status 0 a 1; only with replacements
};

/// Exit status of what could not be started because there is no such program, as shells have it.
inline constexpr int programNotFound = 127;

/// Replaces this process by `program`. Returns only on failure, with the exit status to end with (126 or
/// programNotFound).
int execute(const ChildCommand &command);

/// Has the system kill this process when its parent ends, which a tool that replaces it inherits.
void dieWithParent();

/// From here on SIGTERM, SIGINT and SIGHUP are noted instead of ending this process, so that temporary files
/// made before the child starts are removed too; ChildProcess::run() then starts nothing.
void catchSignals();

/// Runs the child to its end, in a process group of its own.
///
/// SIGTERM, SIGINT and SIGHUP that reach this process meanwhile are passed on to the whole group, so that the
/// encoders a tool has started end with it; what doesn't listen is killed after a second. When the child has
/// ended, so has all that it started. With `replacements`, standard output and standard error of the
/// child go through here: each piece is passed on as it comes, in its order (through one pipe when both go to
/// the same place).
class ChildProcess
{
public:
    explicit ChildProcess(ChildCommand command);

    /// False when it was not started; endLikewise() then ends with the fitting status all the same.
    bool run();

    /// Whether the child ended by itself, and nobody asked this process to end.
    bool endedByItself() const;

    int exitStatus() const { return m_exitStatus; }

    /// Ends this process the way the child ended: by the same signal, or with its exit status.
    [[noreturn]] void endLikewise() const;

private:
    void startChild(int outputPipe, int errorPipe) const;
    void relayOutput(int outputEnd, int errorEnd);
    void awaitChild();

    ChildCommand m_command;
    int m_child = -1;
    int m_exitStatus = 0;
    int m_signal = 0;
    bool m_saidItFailed = false;
};

/// Ends this process by `signal`, or with status 128 + signal should that not be possible.
[[noreturn]] void endBySignal(int signal);

} // namespace kruv::adapters
