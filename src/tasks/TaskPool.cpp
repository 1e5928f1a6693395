// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/TaskPool.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <limits>

namespace kruv::TaskPool {

namespace {

QThreadPool &pool()
{
    static QThreadPool instance;
    static const bool sized = [] {
        instance.setMaxThreadCount(std::numeric_limits<int>::max());
        return true;
    }();
    Q_UNUSED(sized)
    return instance;
}

} // namespace

void start(std::function<void()> work)
{
    pool().start(std::move(work));
}

void drain()
{
    constexpr int pollMilliseconds = 10;
    while (!pool().waitForDone(pollMilliseconds)) {
        QCoreApplication::processEvents();
    }
}

} // namespace kruv::TaskPool
