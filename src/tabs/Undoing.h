// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/History.h"

#include <QObject>
#include <QStringList>

#include <optional>
#include <vector>

namespace kruv {

class Journal;
class KruvTask;
class KruvTaskQueue;

/// Takes back what a run did, job by job. Main thread; throws std::runtime_error for a journal that can't be
/// read.
class Undoing : public QObject
{
    Q_OBJECT
public:
    /// The command that an undo is recorded as.
    static constexpr QLatin1StringView command{"undo"};

    /// Runs that did something which can be taken back, the latest first. Those that took something back
    /// themselves are among them.
    static std::vector<HistoryRun> candidates();
    /// The latest of them that is no undo itself, and no rest that an undo left because it can't be taken
    /// back, unless there are only such rests.
    static std::optional<HistoryRun> latest();

    explicit Undoing(const HistoryRun &run);

    /// Makes the run this process's to undo, and looks at it anew. False where that is under way already, or
    /// was done meanwhile.
    bool take();
    /// After take(). Queues what takes the run's jobs back, the last one first.
    void queueJobs(KruvTaskQueue &queue, Journal &journal);

    /// What would be undone, to stand behind "Undo": "Renaming of 12 Files".
    QString title() const;
    /// What the run did that stays, a sentence each, with the file where it is one file's; the first of them,
    /// and how many more there are.
    QStringList whatStays() const;
    qsizetype jobs() const { return static_cast<qsizetype>(m_entries.size()); }

Q_SIGNALS:
    /// After the last job, with a sentence for each file that could not be put back.
    void finished(qsizetype done, const QStringList &problems);

private:
    bool isTaken() const;
    void readEntries();
    void add(const HistoryEntry &entry);
    void ended(const KruvTask &task, Journal &journal);

    const HistoryRun m_run;
    std::vector<HistoryEntry> m_entries; // to be taken back
    QStringList m_keptNothing;           // files whose old bytes are not known
    QStringList m_outputs;               // that were made and stay
    QStringList m_deleted;               // originals
    qsizetype m_left = 0;                // jobs that have not ended
    qsizetype m_done = 0;
    QStringList m_problems;
};

} // namespace kruv
