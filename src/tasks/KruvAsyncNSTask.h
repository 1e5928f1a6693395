// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvTask.h"

#include <QProcessEnvironment>
#include <QStringDecoder>
#include <QStringList>

#include <memory>

class QProcess;

namespace kruv {

/// A job that runs one command-line tool without blocking. Its output (both streams on one pipe) arrives on
/// the main thread in pieces as the reads return them; a character cut in two by a read is put together
/// again. Exit status 0 is success. Cancelling lets the tool finish; cancelling again ends it.
class KruvAsyncNSTask : public KruvTask
{
public:
    KruvAsyncNSTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments);
    ~KruvAsyncNSTask() override;

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
    /// What the next startTask() launches the tool with.
    void setArguments(const QStringList &arguments) { m_arguments = arguments; }
    /// One piece of output, as one read returned it. Main thread.
    virtual void processTaskOutput(const QString &text);
    /// Runs once, when the tool has ended or a waiting job was cancelled, before anything else. Main thread.
    virtual void willEnd() {}
    /// Takes the place of cleanup() for a job that was cancelled while it waited: such a job has nothing to
    /// show. Reports that list every file of their set say so there instead. Main thread.
    virtual void neverRan();
    /// Outcome work after the tool ended: tags, renames, deletion of the original. On a pool thread, so it
    /// may block. Not called for a job whose tool never ran. What it throws fails the job.
    virtual void cleanup() {}
    /// Runs after the set's bookkeeping, before the queue is told. Main thread.
    virtual void finalCleanup() {}

private:
    void connectChild();
    void readAvailable();
    void childFailedToStart();
    void childFinished(int exitStatus, bool crashed);
    void judge(int exitStatus, bool crashed);
    void finish();

    QString m_launchPath;
    QStringList m_arguments;
    QString m_currentDirectoryPath;
    QProcessEnvironment m_environment;
    std::unique_ptr<QProcess> m_process;
    QStringDecoder m_decoder{QStringDecoder::Utf8};
    bool m_childEnded = false;
    bool m_ending = false;
    bool m_printedText = false;
};

} // namespace kruv
