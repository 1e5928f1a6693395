// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/MainThread.h"

#include "platform/Handover.h"

#include <QCoreApplication>
#include <QThread>

#include <future>
#include <memory>

namespace kruv::MainThread {

namespace {
Handover handover;
}

bool isCurrent()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void post(std::function<void()> work)
{
    handover.put(std::move(work), [] {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { handover.takeAndRun(); }, Qt::QueuedConnection);
    });
}

void run(const std::function<void()> &work)
{
    if (isCurrent()) {
        work();
        return;
    }
    const auto task = std::make_shared<std::packaged_task<void()>>(work);
    std::future<void> done = task->get_future();
    post([task] { (*task)(); });
    done.get();
}

} // namespace kruv::MainThread
