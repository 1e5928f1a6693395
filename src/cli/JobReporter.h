// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/TaskState.h"

#include <QList>
#include <QString>

namespace kruv {

class KruvTask;

/// How the command line shows the jobs of a run. Main thread.
class JobReporter
{
public:
    struct Totals
    {
        int complete = 0;
        int failed = 0;
        int cancelled = 0; // that had begun
        int notBegun = 0;  // and won't
        int all = 0;
        double seconds = 0.0;

        int done() const { return complete + failed; }
        int ended() const { return done() + cancelled + notBegun; }
    };

    virtual ~JobReporter() = default;

    /// How many jobs there are.
    virtual void expects(const Totals &) {}
    virtual void started(const KruvTask &task) = 0;
    virtual void progressed(const KruvTask &task) = 0;
    virtual void ended(const KruvTask &task, const Totals &totals) = 0;
    virtual void results(const QString &title, const QString &text) = 0;
    /// Something a person should know, on standard error.
    virtual void message(const QString &line) = 0;
    virtual void summary(const Totals &totals) = 0;
    /// Nothing is done for a while, or again.
    virtual void held(bool) {}

    /// A line with what runs and what is left, for a person who asks.
    static QString statusLine(const Totals &totals, const QList<const KruvTask *> &running);

    /// What a job that ended came to, for a person who wants to know what was done: one whose tool had
    /// finished when it was cancelled is complete.
    static TaskState::Outcome endOf(const KruvTask &task);
};

/// What a failed job has to say for itself: its tool's words and advice, or nothing.
QString failureMessage(const KruvTask &task);

} // namespace kruv
