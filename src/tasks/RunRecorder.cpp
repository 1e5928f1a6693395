// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/RunRecorder.h"

#include "journal/HistoryRun.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/StagingLock.h"

#include <QDir>

#include <utility>

namespace kruv {

namespace {

constexpr const char *continuedRun = "KRUV_CONTINUED_RUN";

// The last words of a tool that failed say why.
constexpr qsizetype longestReason = 4000;

EntryEnd endOf(const KruvTask &task, double seconds)
{
    EntryEnd end{.receipt = task.receipt()};
    switch (task.state().whatWasDone()) {
    case TaskState::Outcome::Failed:
        end.state = EntryEnd::State::Failed;
        end.reason = task.results()->results(task).trimmed().right(longestReason);
        break;
    case TaskState::Outcome::Cancelled:
        end.state = task.state().withdrawn() ? EntryEnd::State::Removed : EntryEnd::State::Cancelled;
        break;
    case TaskState::Outcome::Complete:
        break;
    }
    if (end.receipt) {
        end.receipt->seconds = seconds;
    }
    return end;
}

} // namespace

bool RunRecorder::isOver(const HistoryRun &run)
{
    return run.ended || StagingLock::hasEnded(run.process.toUtf8());
}

RunRecorder::RunRecorder(Journal &journal, KruvTaskQueue &queue)
    : m_journal(journal)
{
    connect(&queue, &KruvTaskQueue::tasksAdded, this, &RunRecorder::added);
    // The journal writes its list while the queue puts it in order.
    connect(&queue, &KruvTaskQueue::tasksAboutToStart, this, [this] { m_journal.waitUntilWritten(); });
    connect(&queue, &KruvTaskQueue::triedAgain, this, &RunRecorder::triedAgain);
    connect(&queue, &KruvTaskQueue::pausedChanged, this, &RunRecorder::pausedChanged);
    connect(&queue, &KruvTaskQueue::taskStarted, this, &RunRecorder::started);
    connect(&queue, &KruvTaskQueue::taskEnded, this, &RunRecorder::ended);
}

void RunRecorder::recordAs(const QString &command, const QStringList &arguments)
{
    m_command.command = command;
    m_command.arguments = arguments;
    m_isCommandLine = true;
    m_continued = qEnvironmentVariable(continuedRun).toLongLong();
    qunsetenv(continuedRun); // tools are no part of it
}

void RunRecorder::announceContinued(std::int64_t run)
{
    qputenv(continuedRun, QByteArray::number(static_cast<qlonglong>(run)));
}

void RunRecorder::announce(const QString &command, const QString &plan)
{
    m_command.plan = plan;
    if (!m_isCommandLine && (command != m_command.command || !plan.isEmpty())) {
        m_command.command = command;
        m_currentRun = 0;
    }
}

void RunRecorder::resume(const ResumedRun &resumed)
{
    m_currentRun = m_journal.resumeRun(resumed);
    m_canBeResumed = true;
    if (resumed.waiting.empty()) {
        m_journal.endRun(m_currentRun);
    } else {
        m_resumed = m_currentRun + 1;
    }
    forgetCurrentRunSoon();
}

RunRecorder::Number RunRecorder::beginRun()
{
    m_command.folder = QDir::currentPath();
    m_command.process = QString::fromUtf8(StagingLock::thisProcess());
    forgetCurrentRunSoon();
    m_canBeResumed = m_journal.isOn() && !m_command.plan.isEmpty();
    const Number run = m_journal.addRun(m_command);
    if (m_continued != 0) {
        m_journal.forgetRun(std::exchange(m_continued, 0));
    }
    return run;
}

void RunRecorder::forgetCurrentRunSoon()
{
    if (!m_isCommandLine) {
        QMetaObject::invokeMethod(
            this, [this] { m_currentRun = 0; }, Qt::QueuedConnection);
    }
}

RunRecorder::Number RunRecorder::runFor(const KruvTask *after)
{
    if (after && after == m_endedLast) {
        return m_runOfEndedLast;
    }
    if (m_currentRun == 0) {
        m_currentRun = beginRun();
    }
    return m_currentRun;
}

void RunRecorder::enlist(std::span<const std::shared_ptr<KruvTask>> tasks)
{
    addEntries(tasks, runFor(nullptr));
    m_journal.waitUntilWritten();
}

void RunRecorder::added(std::span<const std::shared_ptr<KruvTask>> tasks, const KruvTask *after)
{
    const Number run = runFor(after);
    Number entry = addEntries(tasks, run);
    for (const std::shared_ptr<KruvTask> &task : tasks) {
        follow(*task, {run, entry++});
        m_failed.erase(task.get()); // an earlier one that lay where this one does
    }
    m_unfinished[run] += static_cast<int>(tasks.size());
}

void RunRecorder::follow(KruvTask &task, const Job &job)
{
    m_jobs[&task] = job;
    task.setForecast([&journal = m_journal, entry = job.entry](Receipt receipt) {
        journal.expect(entry, std::move(receipt));
        journal.waitUntilWritten();
    });
}

void RunRecorder::record(const std::vector<DoneRecord> &plan, const std::function<void()> &work)
{
    const Number run = runFor(nullptr);
    std::vector<EntryRecord> entries;
    entries.reserve(plan.size());
    for (const DoneRecord &each : plan) {
        entries.push_back(each.entry);
    }
    const Number first = m_journal.addEntries(run, std::move(entries));
    for (std::size_t index = 0; index < plan.size(); ++index) {
        m_journal.expect(first + index, plan[index].receipt);
    }
    m_journal.waitUntilWritten();
    const auto endAll = [&](EntryEnd::State state) {
        for (std::size_t index = 0; index < plan.size(); ++index) {
            m_journal.end(first + index, {.state = state});
        }
        if (!m_unfinished.contains(run)) {
            m_journal.endRun(run);
        }
    };
    try {
        work();
    } catch (...) {
        endAll(EntryEnd::State::Failed);
        throw;
    }
    endAll(EntryEnd::State::Done);
}

RunRecorder::Number RunRecorder::addEntries(std::span<const std::shared_ptr<KruvTask>> tasks, Number run)
{
    if (m_resumed) {
        return *std::exchange(m_resumed, std::nullopt);
    }
    std::vector<EntryRecord> records;
    records.reserve(tasks.size());
    for (const std::shared_ptr<KruvTask> &task : tasks) {
        records.push_back(task->plannedEntry());
    }
    return m_journal.addEntries(run, std::move(records));
}

/// It takes the failed one's place in its run.
void RunRecorder::triedAgain(KruvTask &task, const KruvTask &failed)
{
    if (const auto found = m_failed.find(&failed); found != m_failed.end()) {
        const Job job{found->second.run, found->second.entry};
        m_failed.erase(found);
        m_failed.erase(&task);
        follow(task, job);
        m_journal.tryAgain(job.run, job.entry);
        ++m_unfinished[job.run];
    }
}

void RunRecorder::pausedChanged(bool paused)
{
    for (auto &[task, job] : m_jobs) {
        job.clock.hold(paused);
    }
}

void RunRecorder::started(const KruvTask &task)
{
    if (const auto found = m_jobs.find(&task); found != m_jobs.end()) {
        found->second.clock.start();
        m_journal.setRunning(found->second.entry);
    }
}

void RunRecorder::ended(const KruvTask &task)
{
    const auto found = m_jobs.find(&task);
    if (found == m_jobs.end()) {
        return;
    }
    const Job job = found->second;
    m_jobs.erase(found);
    if (task.canBeTriedAgain()) {
        m_failed[&task] = job;
    }
    if (!m_breaksOff || task.state().whatWasDone() != TaskState::Outcome::Cancelled) {
        m_journal.end(job.entry, endOf(task, job.clock.seconds()));
    }
    if (--m_unfinished[job.run] == 0) {
        m_unfinished.erase(job.run);
        m_journal.endRun(job.run);
    }
    m_endedLast = &task;
    m_runOfEndedLast = job.run;
}

} // namespace kruv
