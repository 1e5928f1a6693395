// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/MainThread.h"

#include <QCoreApplication>
#include <QThread>

namespace kruv::MainThread {

bool isCurrent()
{
    return QThread::currentThread() == QCoreApplication::instance()->thread();
}

void post(std::function<void()> work)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(work), Qt::QueuedConnection);
}

void run(const std::function<void()> &work)
{
    if (isCurrent()) {
        work();
    } else {
        QMetaObject::invokeMethod(QCoreApplication::instance(), work, Qt::BlockingQueuedConnection);
    }
}

} // namespace kruv::MainThread
