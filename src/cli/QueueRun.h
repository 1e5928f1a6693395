// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkClock.h"
#include "cli/JobReporter.h"

#include <QEventLoop>
#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace kruv {

class CliUserInterface;
class KruvTask;
class KruvTaskQueue;
class RunRecorder;

/// Runs the queue until it is empty, reports what happens, and takes signals. The first Ctrl-C cancels the
/// jobs but lets tools finish that are let finish, the second ends those too, the third waits for nobody.
/// When the program is told to end, or its terminal closes, tools are ended at once. Ctrl-Z stops them with
/// the program.
class QueueRun : public QObject
{
    Q_OBJECT
public:
    QueueRun(KruvTaskQueue &queue, CliUserInterface &userInterface, std::unique_ptr<JobReporter> reporter);
    ~QueueRun() override;

    /// Once that much time has passed, no further job begins.
    void stopAfter(std::chrono::milliseconds time);

    /// Calls `command`, which submits the jobs, then waits for all of them, follow-ups included. What
    /// `command` throws ends the jobs that it had submitted.
    void run(const std::function<void()> &command);

    /// Ends the report. Returns the exit status that the jobs of all runs amount to.
    int finish();
    /// After that, where jobs were cancelled and what is left of them can be done later.
    void sayHowToGoOn(const RunRecorder &recorder) const;
    /// The command that goes on, where it is not kruv resume.
    void setGoesOnBy(const QString &command) { m_goesOnBy = command; }

    /// For commands whose failures are told job by job: the text of a set that failed as a whole would say it
    /// all again.
    void leaveOutResults() { m_reportsResults = false; }
    /// For commands that run no jobs.
    void leaveOutSummary() { m_reportsSummary = false; }

    const JobReporter::Totals &totals() const { return m_totals; }
    /// Somebody pressed Ctrl-C, or the time is over: no further command is run.
    bool interrupted() const { return m_interruptions > 0 || m_leftOut; }

Q_SIGNALS:
    /// The process is about to be stopped.
    void stopping();

private:
    void taskStarted(KruvTask &task);
    void taskChanged(KruvTask &task);
    void taskEnded(KruvTask &task);
    void waitForJobs();
    void tellTotals();
    void interrupt();
    void endAtOnce();
    void endJobs();
    void timeIsOver();
    void stopProcess();
    void tellStatus();
    void sayWhatIsWaitedFor();
    void sayWhatMayBeIncomplete();

    KruvTaskQueue &m_queue;
    std::unique_ptr<JobReporter> m_reporter;
    JobReporter::Totals m_totals;
    QList<const KruvTask *> m_runningTasks;
    WorkClock m_clock;
    QEventLoop m_loop;
    QTimer m_end;
    int m_interruptions = 0;
    bool m_leftOut = false; // something, because the time was over
    bool m_reportsResults = true;
    QString m_goesOnBy = QStringLiteral("kruv resume");
    bool m_reportsSummary = true;
};

} // namespace kruv
