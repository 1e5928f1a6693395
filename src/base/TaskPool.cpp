// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/TaskPool.h"

#include "platform/Handover.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <limits>
#include <memory>

namespace kruv::TaskPool {

namespace {

QThreadPool &pool()
{
    static const std::unique_ptr<QThreadPool> instance = [] {
        auto made = std::make_unique<QThreadPool>();
        made->setMaxThreadCount(std::numeric_limits<int>::max());
        return made;
    }();
    return *instance;
}

Handover handover;

} // namespace

void start(std::function<void()> work)
{
    handover.put(std::move(work), [] { pool().start([] { handover.takeAndRun(); }); });
}

void drain()
{
    constexpr int pollMilliseconds = 10;
    bool idle = false;
    while (!idle) {
        const bool workDone = pool().waitForDone(pollMilliseconds);
        // What the work posted may bring new work.
        QCoreApplication::processEvents();
        idle = workDone && pool().activeThreadCount() == 0;
    }
}

} // namespace kruv::TaskPool
