// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/SignalWatcher.h"

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace kruv {

namespace {

constexpr std::array signals{SIGINT, SIGTERM, SIGHUP};
std::array<int, 2> pipeEnds{-1, -1};
pid_t owner = 0;

void onSignal(int)
{
    // Ctrl-C also reaches a child that is about to become a tool. It is the same key press, not a second one.
    if (getpid() != owner) {
        return;
    }
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(pipeEnds[1], &byte, 1);
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
    struct sigaction action = {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (const int number : signals) {
        sigaction(number, &action, nullptr);
    }
}

SignalWatcher::~SignalWatcher()
{
    for (const int number : signals) {
        std::signal(number, SIG_DFL);
    }
    close(pipeEnds[0]);
    close(pipeEnds[1]);
}

void SignalWatcher::drain()
{
    std::array<char, 64> bytes{};
    if (read(m_descriptor, bytes.data(), bytes.size()) > 0) {
        Q_EMIT interrupted();
    }
}

} // namespace kruv
