// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/QueueRun.h"

#include "base/TaskPool.h"
#include "cli/CliUserInterface.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "platform/SignalWatcher.h"
#include "tasks/KruvAsyncNSTask.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/RunRecorder.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdlib>

namespace kruv {

QueueRun::QueueRun(KruvTaskQueue &queue, CliUserInterface &userInterface,
                   std::unique_ptr<JobReporter> reporter)
    : m_queue(queue)
    , m_reporter(std::move(reporter))
{
    m_clock.start();
    m_end.setSingleShot(true);
    connect(&m_end, &QTimer::timeout, this, &QueueRun::timeIsOver);
    connect(&queue, &KruvTaskQueue::taskStarted, this, &QueueRun::taskStarted);
    connect(&queue, &KruvTaskQueue::taskChanged, this, &QueueRun::taskChanged);
    connect(&queue, &KruvTaskQueue::taskEnded, this, &QueueRun::taskEnded);
    connect(&queue, &KruvTaskQueue::becameIdle, &m_loop, &QEventLoop::quit);
    connect(&userInterface, &CliUserInterface::remarked, this,
            [this](const QString &sentence) { m_reporter->message(sentence); });
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
    if (interrupted()) {
        return;
    }
    SignalWatcher watcher;
    connect(&watcher, &SignalWatcher::interrupted, this, &QueueRun::interrupt);
    connect(&watcher, &SignalWatcher::endWanted, this, &QueueRun::endAtOnce);
    connect(&watcher, &SignalWatcher::stopWanted, this, &QueueRun::stopProcess);
    connect(&watcher, &SignalWatcher::statusWanted, this, &QueueRun::tellStatus);
    try {
        command();
    } catch (...) {
        m_queue.killAllTasks();
        m_queue.killAllTasks(); // the second time ends tools too
        waitForJobs();
        throw;
    }
    tellTotals();
    waitForJobs();
}

void QueueRun::waitForJobs()
{
    if (m_queue.taskCount() > 0) {
        m_loop.exec();
    }
    TaskPool::drain();
}

void QueueRun::tellTotals()
{
    m_totals.all = m_totals.ended() + m_queue.taskCount();
    m_reporter->expects(m_totals);
}

int QueueRun::finish()
{
    m_totals.seconds = m_clock.seconds();
    if (m_reportsSummary) {
        m_reporter->summary(m_totals);
    }
    if (interrupted()) {
        return Cancelled;
    }
    return m_totals.failed > 0 ? Failure : Success;
}

void QueueRun::sayHowToGoOn(const RunRecorder &recorder) const
{
    if (m_totals.cancelled + m_totals.notBegun > 0 && recorder.canBeResumed()) {
        m_reporter->message(tr("To go on where this stopped: %1").arg(m_goesOnBy));
    }
}

void QueueRun::taskStarted(KruvTask &task)
{
    m_runningTasks.append(&task);
    tellTotals();
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
    const bool hadBegun = m_runningTasks.removeOne(&task);
    switch (JobReporter::endOf(task)) {
    case TaskState::Outcome::Complete:
        ++m_totals.complete;
        break;
    case TaskState::Outcome::Failed:
        ++m_totals.failed;
        break;
    case TaskState::Outcome::Cancelled:
        ++(hadBegun ? m_totals.cancelled : m_totals.notBegun);
        break;
    }
    m_totals.all = std::max(m_totals.all, m_totals.ended());
    m_reporter->ended(task, m_totals);
}

void QueueRun::interrupt()
{
    switch (++m_interruptions) {
    case 1:
        m_queue.killAllTasks();
        if (m_queue.taskCount() > 0) {
            sayWhatIsWaitedFor();
        }
        return;
    case 2:
        return endJobs();
    default:
        std::_Exit(Cancelled); // their tools go with this process
    }
}

void QueueRun::sayWhatIsWaitedFor()
{
    const auto finishing = std::ranges::count_if(
        m_runningTasks, [](const KruvTask *task) { return dynamic_cast<const KruvAsyncNSTask *>(task); });
    m_reporter->message(
        finishing > 0
            ? tr("Canceled. Waiting for %n running job(s) to finish; press Ctrl-C again to end them now.",
                 nullptr, static_cast<int>(finishing))
            : tr("Canceled. What runs is given up."));
}

void QueueRun::endAtOnce()
{
    if (m_interruptions < 2) {
        m_interruptions = 2;
        m_queue.killAllTasks();
        endJobs();
    }
}

void QueueRun::stopAfter(std::chrono::milliseconds time)
{
    m_end.start(time);
}

void QueueRun::timeIsOver()
{
    const int left = m_queue.cancelWaiting(KruvTaskQueue::FollowUps::Refused);
    m_leftOut = m_leftOut || left > 0;
    if (left > 0 && m_queue.taskCount() > 0) {
        m_reporter->message(
            tr("The time is over: %n job(s) are left for later. Those that run may finish.", nullptr, left));
    }
}

/// The tools first: they are in sessions of their own, where no Ctrl-Z reaches them.
void QueueRun::stopProcess()
{
    m_reporter->held(true);
    m_clock.hold(true);
    m_queue.pause();
    Q_EMIT stopping();
    SignalWatcher::stopProcess();
    m_queue.goOn();
    m_clock.hold(false);
    m_reporter->held(false);
}

void QueueRun::tellStatus()
{
    m_reporter->message(JobReporter::statusLine(m_totals, m_runningTasks));
}

void QueueRun::endJobs()
{
    using namespace std::chrono_literals;
    constexpr auto longEnough = 5s; // for tools that don't listen, and have to be killed
    m_queue.killAllTasks();
    sayWhatMayBeIncomplete();
    QTimer::singleShot(longEnough, this, [] { std::_Exit(Cancelled); });
}

void QueueRun::sayWhatMayBeIncomplete()
{
    QStringList outputs;
    for (const KruvTask *task : std::as_const(m_runningTasks)) {
        if (QFileInfo(task->outputPath()).isFile()) {
            outputs.append(Console::printable(task->outputPath()));
        }
    }
    m_reporter->message(outputs.isEmpty()
                            ? tr("Ended.")
                            : tr("Ended. Their sources are untouched, but these may be incomplete:"));
    for (const QString &output : std::as_const(outputs)) {
        Console::writeError(QStringLiteral("  %1\n").arg(output));
    }
}

} // namespace kruv
