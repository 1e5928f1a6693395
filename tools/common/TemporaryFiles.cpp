// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/TemporaryFiles.h"

#include "common/ToolError.h"

#include <array>
#include <atomic>
#include <csignal>
#include <unistd.h>

namespace kruv::tools {

namespace {

// Only lock-free atomics and unlink() are allowed within a signal handler.
std::array<std::atomic<const char *>, 64> openFiles;
static_assert(std::atomic<const char *>::is_always_lock_free);

extern "C" void removeAndDie(int signalNumber)
{
    for (auto &slot : openFiles) {
        if (const char *path = slot.load()) {
            ::unlink(path);
        }
    }
    std::signal(signalNumber, SIG_DFL);
    std::raise(signalNumber);
}

void installHandlers()
{
    for (const int signalNumber : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction present = {};
        ::sigaction(signalNumber, nullptr, &present);
        if (present.sa_handler == SIG_IGN) {
            continue;
        }
        struct sigaction action = {};
        action.sa_handler = removeAndDie;
        ::sigaction(signalNumber, &action, nullptr);
    }
}

} // namespace

void TemporaryFiles::remember(const std::string &path)
{
    [[maybe_unused]] static const bool installed = (installHandlers(), true);
    for (auto &slot : openFiles) {
        const char *expected = nullptr;
        if (slot.compare_exchange_strong(expected, path.c_str())) {
            return;
        }
    }
    throw ToolError("too many files are being written at a time");
}

void TemporaryFiles::forget(const std::string &path)
{
    for (auto &slot : openFiles) {
        const char *expected = path.c_str();
        if (slot.compare_exchange_strong(expected, nullptr)) {
            return;
        }
    }
}

} // namespace kruv::tools
