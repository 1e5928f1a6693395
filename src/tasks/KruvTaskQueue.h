// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/StatusTableModel.h"
#include "tasks/TaskCompletionSink.h"

#include <QObject>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <unordered_map>

namespace kruv {

class KruvTask;
class PowerManager;
class Preferences;
class UserInterface;

/// The one job queue: starts at most `maxThreads` jobs at a time in the order they were submitted, keeps the
/// status table, and opens the results of finished sets. Everything but taskCount() is for the main thread.
///
/// The count of running jobs is lowered by every job that reports its end, also by one that was cancelled
/// while it waited and by the second report of a cancelled in-process job. So until the queue is next idle
/// one job more than the limit may run for each of these.
class KruvTaskQueue : public QObject, public TaskCompletionSink
{
    Q_OBJECT
public:
    /// `power` may be null where nothing keeps the machine awake. All references must outlive the queue.
    KruvTaskQueue(Preferences &preferences, UserInterface &userInterface, PowerManager *power);
    ~KruvTaskQueue() override;

    void addTask(std::shared_ptr<KruvTask> task) override;
    void addTasks(std::span<const std::shared_ptr<KruvTask>> tasks);
    void taskCompleted(KruvTask &task) override;
    void taskRowChanged(KruvTask &task) override;
    const Preferences &preferences() const override { return m_preferences; }

    /// Jobs submitted and not yet completed. Any thread.
    int taskCount() const;
    int activeTask() const { return m_activeTask; }
    StatusTableModel &panelArray() { return m_panelArray; }

    /// Cancels every job, last to first. Nothing new is started on the way.
    void killAllTasks();
    void cancelAllTasks();
    /// Drops the failed rows from the status table.
    void removeAllErrors();
    void setMaxThreads(int maxThreads) { m_maxThreads = maxThreads; }

    void preventSleep();
    void allowSleep();

Q_SIGNALS:
    void taskStarted(kruv::KruvTask &task);
    void taskChanged(kruv::KruvTask &task);
    /// Sent once per job, when it leaves the queue.
    void taskEnded(kruv::KruvTask &task);
    void becameIdle();

private:
    using Ticket = std::uint64_t;

    void startTask(const std::shared_ptr<KruvTask> &task);
    void startAndCount(const std::shared_ptr<KruvTask> &task);
    void fillFreePlaces();
    std::shared_ptr<KruvTask> takeFromQueue(KruvTask &task);
    int runningJobs() const;
    void endBusyPeriod();
    void showResultsOf(const KruvTask &task);
    void showOutputWindow(const QString &text, const QString &title);
    void setTaskNumberInDock();

    const Preferences &m_preferences;
    UserInterface &m_userInterface;
    PowerManager *const m_power;

    mutable std::recursive_mutex m_lock;
    std::map<Ticket, std::shared_ptr<KruvTask>> m_taskArray; // in submission order
    std::unordered_map<const KruvTask *, Ticket> m_ticketOfTask;
    Ticket m_nextTicket = 0;
    StatusTableModel m_panelArray;

    int m_activeTask = 0;
    int m_maxThreads;
    int m_lowestActivePosition = 0;
    bool m_cancellingAll = false;
    std::uint32_t m_assertionId = 0;
    bool m_noSleep = false;
};

} // namespace kruv
