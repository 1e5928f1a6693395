// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/ToolLaunch.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv {

namespace {

std::vector<char *> pointersTo(const std::vector<std::string> &words)
{
    std::vector<char *> pointers;
    pointers.reserve(words.size() + 1);
    for (const std::string &word : words) {
        pointers.push_back(const_cast<char *>(word.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// What the child needs, made before it is: it shares the memory of a process with many threads, so it may
/// only call the system.
struct Child
{
    const char *program;
    char *const *words;
    char *const *environment;
    const char *folder; // or null
    int output;
    int report; // takes a Problem, closed by the start of the program
    pid_t parent;
    WatchedTool *watched; // or null
};

struct Problem
{
    int error;
    bool ofFolder;
};

[[noreturn]] void becomeTool(const Child &child)
{
    setsid();
    if (child.watched) {
        child.watched->begin(getpid());
    }
    // Asking is no use here: nobody would be left to see whether the tool listens.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != child.parent) {
        _exit(EXIT_FAILURE); // the program died before that took hold
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    struct sigaction usual = {};
    usual.sa_handler = SIG_DFL;
    sigaction(SIGPIPE, &usual, nullptr); // the program itself ignores it
    dup2(child.output, STDOUT_FILENO);
    dup2(child.output, STDERR_FILENO);
    dup2(open("/dev/null", O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC); // whatever a library left open
    const bool ofFolder = child.folder && chdir(child.folder) != 0;
    if (!ofFolder) {
        execve(child.program, child.words, child.environment);
    }
    const Problem problem{errno, ofFolder};
    [[maybe_unused]] const ssize_t written = write(child.report, &problem, sizeof problem);
    _exit(EXIT_FAILURE);
}

/// Forking would copy the page tables of a program that may hold twenty thousand jobs.
pid_t startChild(const Child &child)
{
    const pid_t process = vfork(); // NOLINT: the child only calls the system
    if (process == 0) {
        becomeTool(child);
    }
    return process;
}

} // namespace

ToolLaunch::Started ToolLaunch::start() const
{
    std::array<int, 2> report{};
    if (pipe2(report.data(), O_CLOEXEC) != 0) {
        return {0, errno, {}};
    }
    std::vector<std::string> line{program};
    line.insert(line.end(), arguments.begin(), arguments.end());
    const std::vector<char *> words = pointersTo(line);
    const std::vector<char *> variables = pointersTo(environment);
    Started started;
    started.process =
        startChild({program.c_str(), words.data(), variables.data(),
                    folder.empty() ? nullptr : folder.c_str(), output, report[1], getpid(), watched});
    started.error = started.process < 0 ? errno : 0;
    close(report[1]);
    Problem problem{};
    if (started.process > 0 && read(report[0], &problem, sizeof problem) == sizeof problem) {
        waitpid(started.process, nullptr, 0);
        started = {0, problem.error, problem.ofFolder ? folder : std::string()};
    }
    close(report[0]);
    return started;
}

} // namespace kruv
