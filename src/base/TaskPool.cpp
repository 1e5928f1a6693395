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

bool waitForDone(std::chrono::milliseconds limit)
{
    return pool().waitForDone(static_cast<int>(limit.count()));
}

void drain()
{
    constexpr auto enough = std::chrono::seconds(10);
    waitForDone(enough);
    QCoreApplication::sendPostedEvents(QCoreApplication::instance());
}

} // namespace kruv::TaskPool
