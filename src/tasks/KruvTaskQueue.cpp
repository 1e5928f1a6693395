// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvTaskQueue.h"

#include "base/Preferences.h"
#include "base/UserInterface.h"
#include "platform/MainThread.h"
#include "platform/PowerManager.h"
#include "tasks/KruvTask.h"

#include <QLoggingCategory>

#include <algorithm>
#include <exception>
#include <functional>
#include <vector>

namespace kruv {

namespace {
Q_LOGGING_CATEGORY(queueLog, "kruv.queue", QtWarningMsg)
}

KruvTaskQueue::KruvTaskQueue(Preferences &preferences, UserInterface &userInterface, PowerManager *power)
    : m_preferences(preferences)
    , m_userInterface(userInterface)
    , m_power(power)
{
    setMaxThreads(preferences.integer(QStringLiteral("maxThreads")));
    connect(&preferences, &Preferences::kruvMaxThreadsChangedNotification, this,
            &KruvTaskQueue::setMaxThreads);
}

KruvTaskQueue::~KruvTaskQueue() = default;

void KruvTaskQueue::setMaxThreads(int maxThreads)
{
    m_maxThreads = std::max(1, maxThreads);
    const std::lock_guard lock(m_lock);
    fillFreePlaces();
}

bool KruvTaskQueue::provesOutputs() const
{
    return m_provesOutputs || m_preferences.boolean(QStringLiteral("proveOutputs"));
}

void KruvTaskQueue::addTask(std::shared_ptr<KruvTask> task)
{
    addTasks(std::span(&task, 1), nullptr);
}

void KruvTaskQueue::addTasks(std::span<const std::shared_ptr<KruvTask>> tasks)
{
    addTasks(tasks, nullptr);
}

void KruvTaskQueue::addTasks(std::span<const std::shared_ptr<KruvTask>> tasks, const KruvTask *after)
{
    if (m_quitting || tasks.empty()) {
        return;
    }
    Q_EMIT tasksAdded(tasks, after);
    const auto ordered = inStartingOrder(tasks);
    Q_EMIT tasksAboutToStart();
    for (const std::shared_ptr<KruvTask> &task : ordered) {
        enqueue(task);
    }
}

/// The longest first, so that none of them runs alone at the end.
std::vector<std::shared_ptr<KruvTask>>
KruvTaskQueue::inStartingOrder(std::span<const std::shared_ptr<KruvTask>> tasks) const
{
    std::vector<std::shared_ptr<KruvTask>> ordered(tasks.begin(), tasks.end());
    if (ordered.size() > 1 && m_preferences.boolean(QStringLiteral("longestFirst"))) {
        std::unordered_map<const KruvTask *, qint64> work;
        for (const std::shared_ptr<KruvTask> &task : ordered) {
            work.emplace(task.get(), task->estimatedWork());
        }
        std::ranges::stable_sort(ordered, std::ranges::greater(),
                                 [&work](const auto &task) { return work.at(task.get()); });
    }
    return ordered;
}

void KruvTaskQueue::enqueue(const std::shared_ptr<KruvTask> &task)
{
    m_userInterface.showStatusPanel();
    const std::lock_guard lock(m_lock);
    m_taskArray.append(task);
    setTaskNumberInDock();
    m_panelArray.append(task);
    preventSleep();
    if (!m_stagingReuse) {
        m_stagingReuse.emplace();
    }
    fillFreePlaces();
}

void KruvTaskQueue::startTask(const std::shared_ptr<KruvTask> &task)
{
    try {
        task->startTask();
    } catch (const std::exception &failure) {
        task->failToStart(QString::fromUtf8(failure.what()));
    }
    Q_EMIT taskStarted(*task);
}

void KruvTaskQueue::startAndCount(QueuedJobs::Entry &entry)
{
    entry.started = true;
    ++m_activeTask;
    startTask(entry.task);
    m_lowestActivePosition = std::max(m_lowestActivePosition, m_panelArray.rowOf(*entry.task));
}

bool KruvTaskQueue::takeFromQueue(const KruvTask &task)
{
    const auto entry = m_taskArray.take(task);
    if (entry && entry->onlyWaits) {
        --m_waitingTasks;
    } else if (entry && entry->started) {
        --m_activeTask;
    }
    return entry.has_value();
}

void KruvTaskQueue::taskOnlyWaits(KruvTask &task)
{
    MainThread::post([this, waiting = task.shared_from_this()] { freePlaceOf(*waiting); });
}

void KruvTaskQueue::freePlaceOf(const KruvTask &task)
{
    constexpr int mostWaiting = 64; // each holds its outputs, and a thread
    const std::lock_guard lock(m_lock);
    QueuedJobs::Entry *const found = m_taskArray.find(task);
    if (found && m_waitingTasks < mostWaiting) {
        found->onlyWaits = true;
        --m_activeTask;
        ++m_waitingTasks;
        fillFreePlaces();
    }
}

void KruvTaskQueue::taskCompleted(KruvTask &task)
try {
    const std::shared_ptr<KruvTask> keptAlive = task.shared_from_this();
    {
        const std::lock_guard lock(m_lock);
        if (!takeFromQueue(task)) {
            return; // it said so before
        }
        setTaskNumberInDock();
    }
    // Told before the next one starts, so that whoever listens never sees more jobs than the limit.
    Q_EMIT taskEnded(task);
    {
        const std::lock_guard lock(m_lock);
        fillFreePlaces();
        m_userInterface.scrollStatusPanelTo(m_lowestActivePosition);
    }
    if (const auto followUp = task.results()->takeTaskAfterSetDone(); followUp && !followUp->isDone()) {
        addTasks(std::span(&followUp, 1), &task);
    }
    if (!isBusy() && !m_cancellingAll) {
        endBusyPeriod();
    }
    showResultsOf(task);
} catch (const std::exception &failure) {
    qCWarning(queueLog, "Exception in queue taskCompleted: %s", failure.what());
}

void KruvTaskQueue::fillFreePlaces()
{
    if (m_cancellingAll || isPaused()) {
        return;
    }
    // A start never completes a job at once, so each of them counts before the next is looked for.
    while (m_activeTask < m_maxThreads) {
        QueuedJobs::Entry *const next = m_taskArray.nextWaiting();
        if (!next) {
            return;
        }
        startAndCount(*next);
        m_userInterface.showStatusPanel();
    }
}

void KruvTaskQueue::endBusyPeriod()
{
    m_panelArray.removeSilent();
    if (m_panelArray.isEmpty()) {
        m_userInterface.closeStatusPanel();
    }
    if (!m_panelArray.hasErrors()) {
        setTaskNumberInDock();
        if (!m_userInterface.notify(tr("Kruv task(s) completed"))) {
            m_userInterface.requestAttention();
        }
    }
    m_lowestActivePosition = 0;
    m_stagingReuse.reset();
    setPaused(false);
    allowSleep();
    Q_EMIT becameIdle();
}

void KruvTaskQueue::showResultsOf(const KruvTask &task)
{
    const std::shared_ptr<KruvTaskResults> results = task.results();
    if (results && results->taskSetDone() && results->hasResults()) {
        showOutputWindow(results->results(), task.title());
    }
}

void KruvTaskQueue::showOutputWindow(const QString &text, const QString &title)
{
    m_userInterface.openResultsWindow(text, title.isEmpty() ? tr("Output") : title);
}

void KruvTaskQueue::taskRowChanged(KruvTask &task)
{
    if (m_panelArray.rowOf(task) < 0) {
        return; // a job that is still being made, or whose row is gone
    }
    m_panelArray.taskChanged(task);
    Q_EMIT taskChanged(task);
}

int KruvTaskQueue::taskCount() const
{
    const std::lock_guard lock(m_lock);
    return static_cast<int>(m_taskArray.size());
}

void KruvTaskQueue::setTaskNumberInDock()
{
    m_userInterface.setBadge(taskCount());
}

void KruvTaskQueue::removeAllErrors()
{
    const std::lock_guard lock(m_lock);
    m_panelArray.removeTelling();
    if (m_taskArray.isEmpty()) {
        m_userInterface.closeStatusPanel();
    }
    setTaskNumberInDock();
}

void KruvTaskQueue::preventSleep()
{
    if (m_power && !m_assertion && !isPaused()) {
        m_assertion = m_power->createAssertion(tr("Kruv task running"));
    }
}

void KruvTaskQueue::allowSleep()
{
    if (m_assertion) {
        m_power->releaseAssertion(*m_assertion);
        m_assertion.reset();
    }
}

} // namespace kruv
