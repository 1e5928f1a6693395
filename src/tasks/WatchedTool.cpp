// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/WatchedTool.h"

#include "base/Descriptor.h"
#include "platform/Resources.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <span>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>

namespace kruv {

namespace {

using Place = std::atomic<pid_t>;
static_assert(Place::is_always_lock_free && sizeof(Place) == sizeof(pid_t), "another process reads it");

// More tools than run at once.
constexpr std::size_t placeCount = 1024;
// What no session has for its number: the tool is about to start.
constexpr pid_t taken = -1;

/// The watcher gets the end of a pipe as standard input, which closes when this program ends, and the table
/// as standard output. It holds nothing else of ours.
bool startWatcher(int alive, int table)
{
    const QByteArray program = QFile::encodeName(toolPath(QStringLiteral("kruv-adapters")));
    std::array<char *, 3> words{const_cast<char *>(program.constData()), const_cast<char *>("watch"),
                                nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, alive, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, table, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    pid_t process = 0;
    const int error =
        posix_spawn(&process, program.constData(), &actions, &attributes, words.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    int status = EXIT_FAILURE;
    while (error == 0 && waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status == EXIT_SUCCESS; // it has made a process of its own, which is nobody's child
}

/// Empty where there is no watcher.
std::span<Place> makeTable()
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        return {};
    }
    const Descriptor watchersEnd(ends[0]); // the other one closes with this process
    const Descriptor memory(memfd_create("kruv-tools", MFD_CLOEXEC));
    constexpr std::size_t size = placeCount * sizeof(Place);
    if (!memory.isOpen() || ftruncate(memory.get(), size) != 0) {
        return {};
    }
    void *table = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, memory.get(), 0);
    if (table == MAP_FAILED || !startWatcher(watchersEnd.get(), memory.get())) {
        return {};
    }
    return {static_cast<Place *>(table), placeCount};
}

} // namespace

WatchedTool::WatchedTool()
    : m_place(nullptr)
{
    static const std::span<Place> table = makeTable();
    for (Place &place : table) {
        pid_t unused = 0;
        if (place.compare_exchange_strong(unused, taken)) {
            m_place = &place;
            return;
        }
    }
}

void WatchedTool::begin(pid_t leader)
{
    if (m_place) {
        *m_place = leader;
    }
}

void WatchedTool::end()
{
    if (m_place) {
        *m_place = 0;
        m_place = nullptr;
    }
}

} // namespace kruv
