// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace kruv {

struct DoneRecord;
class KruvTask;
class KruvTaskQueue;
class Plan;
class Preferences;
class TrackNameInputController;
class UserInterface;

/// What a tab asks of the application around it. Main thread, but for isValidFile().
class TabHost
{
public:
    virtual ~TabHost() = default;

    virtual KruvTaskQueue &taskQueue() = 0;
    /// Hands the jobs of the tab's command to the queue. `plan`: what makes them once more (RunRecord), or
    /// empty.
    virtual void submit(const QString &tabLabel, std::span<const std::shared_ptr<KruvTask>> jobs,
                        const QString &plan) = 0;
    /// Does what needs no jobs, and keeps it in mind (RunRecorder::record).
    virtual void doRecorded(const QString &tabLabel, const std::vector<DoneRecord> &plan,
                            const std::function<void()> &work) = 0;
    /// Where a command is only to be planned, the plan that takes what it would do; else null. Jobs that are
    /// submitted then go into it by themselves.
    virtual Plan *plan() { return nullptr; }
    virtual Preferences &preferences() = 0;
    virtual UserInterface &userInterface() = 0;
    /// The one window for track names; every tab that works with names listens to it.
    virtual TrackNameInputController &trackNameInputController() = 0;

    /// The file types that the tab with this label takes, in upper case; empty where it takes any.
    virtual QStringList acceptedTypes(const QString &tabLabel) const = 0;
    /// Whether the tab with this label takes the file, judged by its extension and, for some, its content.
    /// Any thread.
    virtual bool isValidFile(const QString &tabLabel, const QString &path) const = 0;
};

} // namespace kruv
