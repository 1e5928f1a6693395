// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/TemporaryFiles.h"

#include "common/ToolError.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
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

constexpr std::array endingSignals{SIGTERM, SIGINT, SIGHUP};

void installHandlers()
{
    for (const int signalNumber : endingSignals) {
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

/// Holds back the ending signals: they arrive when it goes.
class SignalsHeldBack
{
public:
    SignalsHeldBack()
    {
        sigset_t held;
        sigemptyset(&held);
        for (const int signalNumber : endingSignals) {
            sigaddset(&held, signalNumber);
        }
        ::pthread_sigmask(SIG_BLOCK, &held, &m_before);
    }
    ~SignalsHeldBack() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsHeldBack(const SignalsHeldBack &) = delete;
    SignalsHeldBack &operator=(const SignalsHeldBack &) = delete;

private:
    sigset_t m_before;
};

} // namespace

int TemporaryFiles::create(std::string &path)
{
    // A signal between the two steps would leave the file behind.
    const SignalsHeldBack heldBack;
    const int descriptor = ::mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0) {
        return -1;
    }
    try {
        remember(path);
    } catch (const ToolError &) {
        ::close(descriptor);
        ::unlink(path.c_str());
        throw;
    }
    return descriptor;
}

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
