// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/History.h"
#include "journal/ResumedRun.h"
#include "tabs/ConversionOrder.h"

#include <QCoreApplication>

#include <functional>
#include <vector>

namespace kruv {

class KruvTaskQueue;
class RunRecorder;
class UserInterface;

/// Carries a run of conversions on that was broken off or cancelled. What counts is what lies on the disk: an
/// output that is as its receipt says is done, whatever else the journal knows of it. What was made but not
/// recorded any more is shown to be the run's own before it is made anew; nothing else is replaced. Main
/// thread; throws std::runtime_error for a journal that can't be read or written.
class Resumption
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Resumption)
public:
    /// Those that can be carried on, the latest first: what is left of them can be made again, and no process
    /// is at them.
    static std::vector<HistoryRun> candidates(History::Jobs jobs);

    using Show = std::function<void(const HistoryRun &run)>;
    /// Asks whether the latest run that was broken off is to go on, and does what the person says; `show`
    /// where it is to be seen first. Nothing where there is none.
    static void offer(KruvTaskQueue &queue, RunRecorder &recorder, UserInterface &person, const Show &show);
    /// Does what is left of it. False where another process was faster.
    static bool goOn(const HistoryRun &run, KruvTaskQueue &queue, RunRecorder &recorder);
    /// The same for a run that another process wrote into that journal and will not touch any more. False
    /// also where the journal is not this process's.
    static bool takeOver(std::int64_t run, const QString &journal, KruvTaskQueue &queue,
                         RunRecorder &recorder);
    /// It is no candidate any more.
    static void forget(const HistoryRun &run);

    /// `jobs`: those to be done.
    Resumption(const HistoryRun &run, History::Jobs jobs);

    /// Makes the run this process's and looks at its files. False where another process was faster.
    bool take();
    /// Queues what is left. Once, after take().
    void queueJobs(KruvTaskQueue &queue, RunRecorder &recorder);

    /// Removes what killed processes left in the run's folders, also in those in which nothing is left to be
    /// made.
    void sweepFolders() const;

    qsizetype jobs() const { return static_cast<qsizetype>(m_plan.entries().size()); }
    /// Of these, those that need not be done again, and those that failed and are not to be tried again.
    qsizetype jobsDone() const;

private:
    enum class Left {
        Nothing,
        All,
        /// It may have been done, but nothing says so.
        PerhapsAll,
        /// Somebody has worked on the output since.
        Proof
    };
    Left leftOf(const HistoryEntry &entry) const;
    bool isOfThisRun(const QString &output) const;
    void add(const HistoryEntry &entry);

    const HistoryRun m_run;
    const bool m_triesAgain;
    ConversionOrder::Kept m_kept;
    OutputPlan m_plan;
    std::vector<std::int64_t> m_ids; // of the plan's entries
    ResumedRun m_resumed;
    std::size_t m_listsDone = 0; // and still there
};

} // namespace kruv
