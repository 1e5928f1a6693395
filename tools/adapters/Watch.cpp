// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Watch.h"

#include "File.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <iterator>
#include <memory>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kruv::adapters {

namespace {

using Clock = std::chrono::steady_clock;

// Adapters take a second at most to end their tools and to remove what is temporary. Not counted in rounds:
// on a busy machine these are long.
constexpr std::chrono::seconds patience(2);
constexpr useconds_t round = 50'000; // microseconds

void waitForTheProgram()
{
    char nothing = 0;
    for (;;) {
        const ssize_t got = read(STDIN_FILENO, &nothing, 1);
        if (got == 0) {
            return;
        }
        if (got < 0 && errno != EINTR) {
            _exit(EXIT_FAILURE);
        }
    }
}

std::vector<pid_t> sessionsInTable()
{
    struct stat table = {};
    if (fstat(STDOUT_FILENO, &table) != 0 || table.st_size <= 0) {
        return {};
    }
    const auto size = static_cast<std::size_t>(table.st_size);
    const void *memory = mmap(nullptr, size, PROT_READ, MAP_SHARED, STDOUT_FILENO, 0);
    if (memory == MAP_FAILED) {
        return {};
    }
    const auto *first = static_cast<const pid_t *>(memory);
    std::vector<pid_t> sessions;
    std::copy_if(first, first + size / sizeof(pid_t), std::back_inserter(sessions),
                 [](pid_t session) { return session > 0; });
    return sessions;
}

struct Process
{
    pid_t number;
    pid_t session;
};

/// The session of a process that has not ended, or 0.
pid_t sessionOf(const std::string &process)
{
    constexpr std::size_t enough = 512;
    const std::string line = readStart("/proc/" + process + "/stat", enough);
    const std::size_t end = line.rfind(')'); // of the program's name, which may hold anything
    char state = 'Z';
    int session = 0;
    if (end == std::string::npos ||
        std::sscanf(line.c_str() + end, ") %c %*d %*d %d", &state, &session) != 2) {
        return 0;
    }
    return state == 'Z' ? 0 : session;
}

std::vector<Process> processesIn(const std::vector<pid_t> &sessions)
{
    std::vector<Process> found;
    const std::unique_ptr<DIR, int (*)(DIR *)> entries(opendir("/proc"), closedir);
    while (const dirent *entry = entries ? readdir(entries.get()) : nullptr) {
        const pid_t number = std::atoi(entry->d_name);
        const pid_t session = number > 0 ? sessionOf(entry->d_name) : 0;
        if (session > 0 && std::ranges::count(sessions, session) > 0) {
            found.push_back({number, session});
        }
    }
    return found;
}

} // namespace

int watchTools()
{
    close_range(STDERR_FILENO + 1, ~0U, 0);
    if (chdir("/") != 0) { // so that no volume is in use because of us
        return EXIT_FAILURE;
    }
    if (fork() != 0) { // so that the program has no child but its tools
        return EXIT_SUCCESS;
    }
    waitForTheProgram();
    std::vector<pid_t> sessions = sessionsInTable();
    const auto deadline = Clock::now() + patience;
    bool asked = false;
    while (!sessions.empty()) {
        const bool tooLate = Clock::now() >= deadline;
        const std::vector<Process> left = processesIn(sessions);
        // The number of a session that has ended may soon be somebody else's.
        sessions.clear();
        for (const Process &process : left) {
            sessions.push_back(process.session);
            if (!asked || tooLate) {
                kill(process.number, asked ? SIGKILL : SIGTERM);
            }
        }
        asked = true;
        if (!left.empty()) {
            usleep(round);
        }
    }
    return EXIT_SUCCESS;
}

} // namespace kruv::adapters
