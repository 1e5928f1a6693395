// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTask.h"

#include <QStringList>

#include <functional>

namespace kruv {

/// Base of the jobs that go through several steps by themselves on a pool thread: conversions, tools run to
/// their end, tag copies. Such a job ends once, when its steps have: cancelling ends the tool that is
/// running, and the steps see cancelled() and return.
class StagedTask : public KruvTask
{
public:
    /// `fileName` is the source; its last path component becomes the title. Empty for jobs on many files.
    StagedTask(TaskCompletionSink *queue, const QString &fileName);

    void startTask() override;
    /// Ends the job: without a failure its results have nothing to show. Tells the queue. Any thread.
    void stopTask() override;

    const QString &fileName() const { return m_fileName; }
    QString inputPath() const override { return m_fileName; }

protected:
    /// All steps, on a pool thread; the job is stopped when it returns. What it throws fails the job.
    virtual void doStartTask() = 0;

    /// Takes one piece of a tool's output, both streams together, as one read returned it.
    using OutputReader = std::function<void(const QString &piece)>;

    /// Runs a tool to its end, with `folder` as its working directory where it is not empty, and judges that
    /// end. A tool of a job that was cancelled, or that `read` marked as failed, is ended at once. Returns
    /// whether the job may go on with its next step. Throws std::runtime_error when the tool can't be
    /// launched.
    bool runTool(const QString &launchPath, const QStringList &arguments, const OutputReader &read,
                 const QString &folder = {});

    /// Neither failed nor cancelled.
    bool mayGoOn() const { return !error() && !cancelled(); }

    void showStatus(const QString &status);
    /// Shows status and percentage when the percentage is at least 1 above the one shown last. Each tool, and
    /// each restartProgress(), begins at 0.
    void showProgress(const QString &status, double percentage);
    void restartProgress() { m_lastPercentageDisplayed = 0.0; }

private:
    const QString m_fileName;
    double m_lastPercentageDisplayed = 0.0;
};

} // namespace kruv
