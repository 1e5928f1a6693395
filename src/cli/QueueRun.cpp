// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/QueueRun.h"

#include "base/TaskPool.h"
#include "cli/CliUserInterface.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "platform/MainThread.h"
#include "platform/SignalWatcher.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <QStringList>

#include <algorithm>
#include <cstdlib>

namespace kruv {

QueueRun::QueueRun(KruvTaskQueue &queue, CliUserInterface &userInterface,
                   std::unique_ptr<JobReporter> reporter)
    : m_queue(queue)
    , m_reporter(std::move(reporter))
{
    m_clock.start();
    connect(&queue, &KruvTaskQueue::taskStarted, this, &QueueRun::taskStarted);
    connect(&queue, &KruvTaskQueue::taskChanged, this, &QueueRun::taskChanged);
    connect(&queue, &KruvTaskQueue::taskEnded, this, &QueueRun::taskEnded);
    connect(&userInterface, &CliUserInterface::resultsReady, this,
            [this](const QString &title, const QString &text) {
                if (m_reportsResults) {
                    m_reporter->results(title, text);
                }
            });
}

QueueRun::~QueueRun() = default;

void QueueRun::run(const std::function<void()> &command)
{
    if (m_interrupted) {
        return;
    }
    SignalWatcher watcher;
    connect(&watcher, &SignalWatcher::interrupted, this, &QueueRun::interrupt);
    command();
    m_totals.all += m_queue.taskCount();
    if (m_queue.taskCount() > 0) {
        m_running = true;
        m_loop.exec();
        m_running = false;
    }
    TaskPool::drain();
}

int QueueRun::finish()
{
    m_totals.seconds = static_cast<double>(m_clock.elapsed()) / 1000.0;
    if (m_reportsSummary) {
        m_reporter->summary(m_totals);
    }
    if (m_interrupted) {
        return Cancelled;
    }
    return m_totals.failed > 0 ? Failure : Success;
}

void QueueRun::taskStarted(KruvTask &task)
{
    m_runningTasks.insert(&task);
    m_reporter->started(task);
}

void QueueRun::taskChanged(KruvTask &task)
{
    if (m_runningTasks.contains(&task)) {
        m_reporter->progressed(task);
    }
}

void QueueRun::taskEnded(KruvTask &task)
{
    m_runningTasks.remove(&task);
    if (task.cancelled()) {
        ++m_totals.cancelled;
    } else if (task.error()) {
        ++m_totals.failed;
    } else {
        ++m_totals.complete;
    }
    m_totals.all = std::max(m_totals.all, m_totals.complete + m_totals.failed + m_totals.cancelled);
    m_reporter->ended(task, m_totals);
    // A follow-up job was posted before its set's last job reported; look once it has arrived.
    MainThread::post([this] { quitWhenEmpty(); });
}

void QueueRun::quitWhenEmpty()
{
    if (m_running && m_queue.taskCount() == 0) {
        m_loop.quit();
    }
}

void QueueRun::interrupt()
{
    if (m_interrupted) {
        endNow();
    }
    m_interrupted = true;
    m_queue.killAllTasks();
    if (m_queue.taskCount() > 0) {
        m_reporter->message(
            QStringLiteral("Canceled. Waiting for %1 running job(s) to finish; press Ctrl-C again to end "
                           "them now.")
                .arg(m_queue.taskCount()));
    }
}

void QueueRun::endNow()
{
    m_queue.killAllTasks();
    QStringList outputs;
    for (const KruvTask *task : std::as_const(m_runningTasks)) {
        if (!task->outputPath().isEmpty()) {
            outputs.append(Console::printable(task->outputPath()));
        }
    }
    m_reporter->message(
        outputs.isEmpty()
            ? QStringLiteral("Ended.")
            : QStringLiteral("Ended. Their sources are untouched, but these may be incomplete:"));
    for (const QString &output : std::as_const(outputs)) {
        Console::writeError(QStringLiteral("  %1\n").arg(output));
    }
    std::_Exit(Cancelled);
}

} // namespace kruv
