// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

namespace kruv {

class KruvTask;
class Preferences;
class WorkPause;

/// What a job tells, and asks of, whoever runs it. Main thread where nothing else is said.
class TaskCompletionSink
{
public:
    virtual ~TaskCompletionSink() = default;

    /// Submits one more job (a follow-up of a finished set).
    virtual void addTask(std::shared_ptr<KruvTask> task) = 0;

    /// A job ended. In-process jobs that were cancelled while running say so twice.
    virtual void taskCompleted(KruvTask &task) = 0;

    /// What the person wants done with originals and the like. Any thread.
    virtual const Preferences &preferences() const = 0;

    /// How many jobs may run at once, which also bounds the threads of one. Any thread.
    virtual int maxThreads() const = 0;

    /// Whether jobs that keep their originals prove their outputs as well. Any thread.
    virtual bool provesOutputs() const = 0;

    /// What holds the work of the jobs for a while, or null. Any thread.
    virtual WorkPause *workPause() = 0;

    /// From here on the job does nothing but wait for the disk: another one may run beside it. Any thread.
    virtual void taskOnlyWaits(KruvTask &task) = 0;

    /// A job's status row shows something new.
    virtual void taskRowChanged(KruvTask &task) = 0;
};

} // namespace kruv
