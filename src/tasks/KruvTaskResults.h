// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QCoreApplication>
#include <QString>

#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace kruv {

class KruvTask;

/// The result set of one command, shared by its jobs: their texts in the order they were added, and whether
/// that text is worth showing. Safe from any thread.
class KruvTaskResults
{
    Q_DECLARE_TR_FUNCTIONS(kruv::KruvTaskResults)
public:
    /// Longest text kept for one job, in UTF-16 units. What a flooding tool prints beyond it is left out, and
    /// said so.
    static constexpr qsizetype maxTextLength = qsizetype{4} * 1024 * 1024;
    /// The same for the texts of all jobs together, so that ten thousand flooding tools fill no memory.
    static constexpr qsizetype maxSetLength = 16 * maxTextLength;

    /// Adding a job that is in the set already does nothing.
    void addTaskInSet(const KruvTask &task);
    std::size_t taskCount() const;

    /// Appends to the text of the set's first job.
    void appendResults(const QString &text);
    void appendResults(const QString &text, const KruvTask &task);
    /// Puts `line`, with its break, on a line of its own, whatever the text ends with and however long it is.
    void appendLine(const QString &line, const KruvTask &task);
    /// Ends the line that the job's text ends in.
    void endLine(const KruvTask &task);
    /// Replaces the first job's (or the given job's) text and marks the set as worth showing.
    void setResults(const QString &text);
    void setResults(const QString &text, const KruvTask &task);

    /// Each job's text in set order, each followed by a line break.
    QString results() const;
    QString results(const KruvTask &task) const;

    bool taskSetDone() const;
    bool hasResults() const;
    void setHasResults(bool hasResults);
    /// One more job, for when every job of the set has ended.
    void setTaskAfterSetDone(std::shared_ptr<KruvTask> task);

    /// Books the end of one job. The set is done when it was the last.
    void noteTaskDone(const KruvTask &task);
    /// Hands out the follow-up job of a set that is done, once.
    std::shared_ptr<KruvTask> takeTaskAfterSetDone();

private:
    struct Entry
    {
        QString text;
        bool done = false;
        bool truncated = false;
    };

    Entry *entryFor(const KruvTask &task);
    void append(Entry &entry, const QString &text);
    void endLine(Entry &entry);
    void replace(Entry &entry, const QString &text);

    mutable std::mutex m_resultsLock;
    std::vector<Entry> m_tasksInSet;
    std::unordered_map<const KruvTask *, std::size_t> m_indexOfTask; // compared only, never followed
    std::size_t m_unfinished = 0;
    qsizetype m_setLength = 0;
    bool m_taskSetDone = false;
    bool m_hasResults = true;
    std::shared_ptr<KruvTask> m_taskAfterSetDone;
};

} // namespace kruv
