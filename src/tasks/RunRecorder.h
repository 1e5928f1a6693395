// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkClock.h"
#include "journal/DoneRecord.h"
#include "journal/Journal.h"

#include <QObject>

#include <memory>
#include <optional>
#include <span>
#include <unordered_map>

namespace kruv {

class KruvTask;
class KruvTaskQueue;
struct HistoryRun;

/// Tells the journal what the queue does: which jobs a run has, before the first starts, and how each ends.
/// Main thread.
class RunRecorder : public QObject
{
    Q_OBJECT
public:
    /// Whether no process is at it any more.
    static bool isOver(const HistoryRun &run);

    /// Both must outlive it.
    RunRecorder(Journal &journal, KruvTaskQueue &queue);

    /// For the program that this process becomes: what it records takes the place of that run, which is
    /// forgotten with it.
    static void announceContinued(std::int64_t run);
    /// All jobs of this process belong to one run: that of its command line.
    void recordAs(const QString &command, const QStringList &arguments);
    /// The jobs that come before control returns to the event loop are a run of this command's. Those with a
    /// plan (RunRecord) are one by themselves.
    void announce(const QString &command, const QString &plan);
    /// Work that is done without jobs, as entries of the run. Its plan, with the receipts that it will earn,
    /// is in the journal before it begins: a program that is killed in the middle of it leaves what can be
    /// undone. Throws what `work` throws; all of it has failed then.
    void record(const std::vector<DoneRecord> &plan, const std::function<void()> &work);
    /// As entries of the run that wait: another process will take it over.
    void enlist(std::span<const std::shared_ptr<KruvTask>> tasks);
    /// Whether what is left of the latest run can be done by a later process.
    bool canBeResumed() const { return m_canBeResumed; }
    /// The program ends. Jobs that are cancelled from here on are left as they are for a later process:
    /// nobody wanted these out of the way.
    void breakOff() { m_breaksOff = true; }
    /// The next jobs are the waiting entries of a run that goes on.
    void resume(const ResumedRun &resumed);

private:
    using Number = Journal::Number;
    struct Job
    {
        Number run = 0;
        Number entry = 0;
        WorkClock clock = {}; // from its start
    };

    void added(std::span<const std::shared_ptr<KruvTask>> tasks, const KruvTask *after);
    void triedAgain(KruvTask &task, const KruvTask &failed);
    void follow(KruvTask &task, const Job &job);
    void pausedChanged(bool paused);
    void started(const KruvTask &task);
    void ended(const KruvTask &task);
    Number runFor(const KruvTask *after);
    Number beginRun();
    void forgetCurrentRunSoon();
    Number addEntries(std::span<const std::shared_ptr<KruvTask>> tasks, Number run);

    Journal &m_journal;
    RunRecord m_command;          // of the next run
    std::int64_t m_continued = 0; // by its number in the file
    bool m_isCommandLine = false;
    bool m_canBeResumed = false;
    bool m_breaksOff = false;
    Number m_currentRun = 0;
    std::optional<Number> m_resumed;                    // the first of its entries that the next jobs are
    std::unordered_map<const KruvTask *, Job> m_jobs;   // that have not ended
    std::unordered_map<const KruvTask *, Job> m_failed; // compared only
    std::unordered_map<Number, int> m_unfinished;       // jobs of a run
    const KruvTask *m_endedLast = nullptr;              // compared only
    Number m_runOfEndedLast = 0;
};

} // namespace kruv
