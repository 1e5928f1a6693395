// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTask.h"

#include <QProcessEnvironment>
#include <QStringList>

namespace kruv {

/// A job that runs one command-line tool. A pool thread runs it; its output (both streams on one pipe)
/// arrives on the main thread in pieces as the reads return them. Exit status 0 is success. Cancelling lets
/// the tool finish; cancelling again ends it.
class KruvAsyncNSTask : public KruvTask
{
public:
    KruvAsyncNSTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments);

    void appendToPATH(const QString &folder);
    /// Working directory of the tool; empty means inherited.
    void setDirectory(const QString &folder) { m_currentDirectoryPath = folder; }
    const QString &launchPath() const { return m_launchPath; }
    const QStringList &arguments() const { return m_arguments; }
    const QProcessEnvironment &environment() const { return m_environment; }

    /// Launches the tool. Throws std::runtime_error when there is no such executable file.
    void startTask() override;
    void cancelTask() override;
    void stopTask() override;
    QString description() const override;

protected:
    void foresee() override;
    /// What the tool is launched with next. Main thread.
    void setArguments(const QStringList &arguments) { m_arguments = arguments; }
    /// Runs before the tool is started, on the pool thread, so it may block. What it throws keeps the tool
    /// from being started.
    virtual void prepare() {}
    /// One piece of output, as one read returned it. Main thread.
    virtual void processTaskOutput(const QString &text);
    /// Asked when the tool has ended and the job was not cancelled: whether it is to run once more, perhaps
    /// with other arguments. Main thread.
    virtual bool runsAgain() { return false; }
    /// Whether the run that ended was the last that is needed, though the job was cancelled meanwhile.
    virtual bool isFinished() const { return true; }
    /// Runs once, when the tool has ended or a waiting job was cancelled, before anything else. Main thread.
    virtual void willEnd() {}
    /// Takes the place of cleanup() for a job that was cancelled while it waited: such a job has nothing to
    /// show. Reports that list every file of their set say so there instead. Main thread.
    virtual void neverRan();
    /// Outcome work after the tool ended: tags, renames, deletion of the original. On a pool thread, so it
    /// may block; cancelling comes too late for it. Not called for a job whose tool never ran. What it throws
    /// fails the job.
    virtual void cleanup() {}
    /// Runs after the set's bookkeeping, before the queue is told. Main thread.
    virtual void finalCleanup() {}

private:
    void stopRunning() override {} // its tool may finish
    void run();
    void runTool();
    bool toolEnded(const ToolEnd &end);
    void finish();

    const QString m_launchPath;
    QStringList m_arguments;
    QString m_currentDirectoryPath;
    QProcessEnvironment m_environment;
};

} // namespace kruv
