// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTask.h"
#include "tasks/TextOutput.h"

#include <QCoreApplication>

#include <atomic>
#include <cstddef>
#include <functional>

namespace kruv {

/// Base of the jobs that write or verify one list: the work runs on a pool thread, several files of the list
/// at once. A cancelled job ends when its work has stopped, at the next piece that it reads.
class ListJob : public KruvTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ListJob)
public:
    using KruvTask::KruvTask;

    void startTask() override;
    void stopTask() override;

protected:
    /// How far one file of the list is. Goes to the end of its share when it is destroyed.
    class FileProgress
    {
    public:
        explicit FileProgress(ListJob &job);
        ~FileProgress();
        FileProgress(const FileProgress &) = delete;
        FileProgress &operator=(const FileProgress &) = delete;

        /// `share`: 0 to 1 of the file.
        void set(double share);

    private:
        ListJob &m_job;
        qint64 m_reported = 0;
    };

    /// The whole work. What it throws fails the job.
    virtual void doStartTask() = 0;
    /// Reports are worth showing however they end; other jobs only where they failed.
    virtual bool isReport() const { return false; }

    /// Calls `work` for 0 to count - 1 on as many threads as there are processors, at most as many as jobs
    /// may run at once, in any order; returns when all are done, or early when the job was cancelled.
    void forEachFile(std::size_t count,
                     const std::function<void(std::size_t index, FileProgress &progress)> &work);
    /// Shows the pending fields soon. Cheap enough to be called for every piece that is read.
    void showProgress();
    void showStatus(const QString &status);
    /// Writes a list; where that fails, so does the job, and says so.
    void writeList(const TextOutput &list, const QString &text);

private:
    void advance(qint64 units);

    std::atomic<qint64> m_units = 0;
    qint64 m_allUnits = 1;
    std::atomic<qint64> m_lastShown = 0; // milliseconds
};

} // namespace kruv
