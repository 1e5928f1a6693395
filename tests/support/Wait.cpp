// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/Wait.h"

#include "base/TaskPool.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTimer>

#include <chrono>

namespace kruv::test {

bool waitUntil(const std::function<bool()> &predicate)
{
    using namespace std::chrono_literals;
    const QDeadlineTimer limit(1min);
    QTimer tick; // for predicates that no event announces
    tick.start(5ms);
    while (!predicate()) {
        if (limit.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void serveEvents()
{
    constexpr int rounds = 5;
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents();
    }
}

void drainPool()
{
    using namespace std::chrono_literals;
    bool idle = false;
    while (!idle) {
        idle = TaskPool::waitForDone(5ms);
        serveEvents(); // which may bring new work
        idle = idle && TaskPool::waitForDone(0ms);
    }
}

bool endsSoon(const QByteArray &process)
{
    return waitUntil([path = QStringLiteral("/proc/%1/stat").arg(QString::fromLatin1(process))] {
        QFile stat(path);
        return !stat.open(QIODevice::ReadOnly) || stat.readAll().contains(") Z ");
    });
}

} // namespace kruv::test
