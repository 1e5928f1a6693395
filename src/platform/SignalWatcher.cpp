// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/SignalWatcher.h"

#include <QSocketNotifier>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kruv {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP, SIGTSTP, SIGUSR1};
std::array<int, 2> pipeEnds{-1, -1};
pid_t owner = 0;

void onSignal(int signal)
{
    // Ctrl-C also reaches a child that is about to become a tool. It is the same key press, not a second one.
    if (getpid() != owner) {
        return;
    }
    const int error = errno;
    const char byte = static_cast<char>(signal);
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
    errno = error;
}

void watch(int signal)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    sigaction(signal, &action, nullptr);
}

} // namespace

SignalWatcher::SignalWatcher(QObject *parent)
    : QObject(parent)
{
    if (pipe2(pipeEnds.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    owner = getpid();
    m_descriptor = pipeEnds[0];
    auto *notifier = new QSocketNotifier(m_descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &SignalWatcher::drain);
    std::ranges::for_each(signals, watch);
}

void SignalWatcher::ignoreQuestions()
{
    std::signal(SIGUSR1, SIG_IGN);
}

SignalWatcher::~SignalWatcher()
{
    for (const int number : signals) {
        // A question that comes too late must not end the program.
        std::signal(number, number == SIGUSR1 ? SIG_IGN : SIG_DFL);
    }
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

void SignalWatcher::drain()
{
    std::array<char, 64> bytes{};
    const ssize_t count = read(m_descriptor, bytes.data(), bytes.size());
    for (ssize_t index = 0; index < count; ++index) {
        tell(bytes[static_cast<std::size_t>(index)]);
    }
}

void SignalWatcher::tell(int signal)
{
    switch (signal) {
    case SIGINT:
        Q_EMIT interrupted();
        break;
    case SIGTSTP:
        Q_EMIT stopWanted();
        break;
    case SIGUSR1:
        Q_EMIT statusWanted();
        break;
    default:
        Q_EMIT endWanted();
        break;
    }
}

void SignalWatcher::stopProcess()
{
    std::signal(SIGTSTP, SIG_DFL);
    std::raise(SIGTSTP);
    watch(SIGTSTP);
}

} // namespace kruv
