// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkPause.h"
#include "tasks/QueuedJobs.h"
#include "tasks/StagingReuse.h"
#include "tasks/StatusTableModel.h"
#include "tasks/TaskCompletionSink.h"

#include <QObject>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace kruv {

class KruvTask;
class PowerManager;
class Preferences;
class UserInterface;

/// The one job queue: starts at most `maxThreads` jobs at a time, the longest of a command first, keeps the
/// status table, and opens the results of finished sets. A set's follow-up job belongs to the same busy
/// period. Everything but taskCount() is for the main thread.
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
    void taskOnlyWaits(KruvTask &task) override;
    void taskRowChanged(KruvTask &task) override;
    const Preferences &preferences() const override { return m_preferences; }

    /// Jobs submitted and not yet completed. Any thread.
    int taskCount() const;
    /// Jobs that run, without those that only wait.
    int activeTask() const { return m_activeTask; }
    StatusTableModel &panelArray() { return m_panelArray; }

    /// Cancels every job, last to first. Nothing new is started on the way. The second time ends the tools of
    /// runner jobs, which the first time lets finish.
    void cancelAllTasks();
    /// The same for good, before the program ends: follow-up jobs that come after it are refused too.
    void killAllTasks();
    /// Drops the failed rows from the status table.
    void removeAllErrors();
    /// Starts as many more as it allows; running jobs are not touched. Less than one job at once would be
    /// none for ever and becomes one.
    void setMaxThreads(int maxThreads);
    int maxThreads() const override { return m_maxThreads; }
    /// All jobs of this run prove their outputs, whatever the preference says.
    void setProvesOutputs() { m_provesOutputs = true; }
    bool provesOutputs() const override;

    /// Holds all work: tools are stopped, jobs in this process stand still at their next block, none begins,
    /// and the machine may sleep. Lasts until the queue is empty at the longest; of an empty queue nothing is
    /// held.
    void pause();
    void goOn();
    bool isPaused() const { return m_workPause.isOn(); }
    WorkPause *workPause() override { return &m_workPause; }

    /// Cancels what has not begun, last to first; what runs may finish. Returns how many there were. Where
    /// there were any, the follow-up jobs of their sets may be refused from here on, as before the program
    /// ends.
    enum class FollowUps { Come, Refused };
    int cancelWaiting(FollowUps followUps);
    bool isWaiting(const KruvTask &task) const;
    bool hasWaiting() const { return m_taskArray.hasWaiting(); }

    using Move = QueuedJobs::Move;
    /// Changes the order in which waiting jobs begin. Does nothing to a job that does not wait.
    void move(const KruvTask &task, Move where);
    /// These before all others, in their order; those that don't wait stay.
    void moveFirst(const std::vector<std::shared_ptr<KruvTask>> &tasks);
    /// The job whose place it would take; null where it can't be moved so.
    const KruvTask *placeFor(const KruvTask &task, Move where) const
    {
        return m_taskArray.placeFor(task, where);
    }
    /// Takes a job that waits out of the queue, for good.
    void remove(KruvTask &task);
    /// Makes the failed jobs of the status table once more, of those that can be, and drops their rows.
    void tryFailedAgain();
    bool canTryFailedAgain() const;

    /// Gives the machine its sleep back, whatever still runs.
    void allowSleep();

Q_SIGNALS:
    /// Before their order is known. `after` is the job whose end brought them; null for a command's own.
    void tasksAdded(std::span<const std::shared_ptr<kruv::KruvTask>> tasks, const kruv::KruvTask *after);
    /// None of those that were added starts before this returns.
    void tasksAboutToStart();
    /// A failed job gets another chance. Before it starts.
    void triedAgain(kruv::KruvTask &task, const kruv::KruvTask &failed);
    void taskStarted(kruv::KruvTask &task);
    void taskChanged(kruv::KruvTask &task);
    /// Sent once per job, when it leaves the queue.
    void taskEnded(kruv::KruvTask &task);
    void becameIdle();
    void pausedChanged(bool paused);

private:
    void addTasks(std::span<const std::shared_ptr<KruvTask>> tasks, const KruvTask *after);
    std::vector<std::shared_ptr<KruvTask>>
    inStartingOrder(std::span<const std::shared_ptr<KruvTask>> tasks) const;
    void enqueue(const std::shared_ptr<KruvTask> &task);
    void startTask(const std::shared_ptr<KruvTask> &task);
    void startAndCount(QueuedJobs::Entry &entry);
    void fillFreePlaces();
    void freePlaceOf(const KruvTask &task);
    bool takeFromQueue(const KruvTask &task);
    void cancel(const std::vector<std::shared_ptr<KruvTask>> &tasks);
    bool isBusy() const { return !m_taskArray.isEmpty(); }
    void endBusyPeriod();
    void preventSleep();
    void setPaused(bool paused);
    void showResultsOf(const KruvTask &task);
    void showOutputWindow(const QString &text, const QString &title);
    void setTaskNumberInDock();

    const Preferences &m_preferences;
    UserInterface &m_userInterface;
    PowerManager *const m_power;

    mutable std::recursive_mutex m_lock;
    QueuedJobs m_taskArray;
    StatusTableModel m_panelArray;
    WorkPause m_workPause;

    int m_activeTask = 0;   // entries of m_taskArray that were started and do not only wait
    int m_waitingTasks = 0; // those that do
    std::atomic<int> m_maxThreads = 1;
    std::atomic<bool> m_provesOutputs = false;
    int m_lowestActivePosition = 0;
    bool m_cancellingAll = false;
    bool m_quitting = false;
    std::optional<std::uint32_t> m_assertion;   // in a busy period
    std::optional<StagingReuse> m_stagingReuse; // in a busy period
};

} // namespace kruv
