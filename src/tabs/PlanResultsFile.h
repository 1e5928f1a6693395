// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "base/WorkClock.h"

#include <QCoreApplication>
#include <QFile>
#include <QObject>

#include <cstddef>
#include <functional>
#include <unordered_map>

namespace kruv {

class KruvTask;
class KruvTaskQueue;

/// Writes down how the jobs of one run of a plan end, line by line, in a file of the run's own. Main thread.
class PlanResultsFile : public QObject
{
    Q_OBJECT
public:
    struct Run
    {
        QString folder; ///< is made
        QString plan;   ///< PlanFile::id()
        QString shard;
    };
    /// Throws std::runtime_error where nothing can be written there.
    PlanResultsFile(const Run &run, KruvTaskQueue &queue);

    /// The job that makes an entry.
    void follow(const KruvTask &job, std::size_t entry);
    /// An entry for which there is no job.
    void addFailure(std::size_t entry, const QString &source, const QString &reason);
    /// All lists are written.
    void addLists();

Q_SIGNALS:
    /// Once, where a line could not be written: what it tells of will be looked at again.
    void failed(const QString &sentence);

private:
    struct Job
    {
        std::size_t entry = 0;
        WorkClock clock = {};
    };
    void started(const KruvTask &job);
    void ended(const KruvTask &job);
    void writeLine(const QJsonObject &object);

    QFile m_file;
    std::unordered_map<const KruvTask *, Job> m_jobs; // that have not ended
    bool m_hasFailed = false;
};

} // namespace kruv
