// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "support/Engine.h"
#include "tasks/KruvTask.h"
#include "tasks/TaskCompletionSink.h"

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

namespace kruv::test {

/// A job without work: a test starts it through the queue and says how it ends.
class FakeJob : public KruvTask
{
public:
    enum class Kind {
        /// Has nothing to show unless it failed.
        Conversion,
        /// Always wants its text shown.
        Report
    };

    FakeJob(TaskCompletionSink *queue, const QString &title, QStringList *starts = nullptr,
            Kind kind = Kind::Conversion)
        : KruvTask(queue)
        , m_starts(starts)
        , m_kind(kind)
    {
        setTitle(title);
    }

    void startTask() override
    {
        if (cannotStart) {
            throw std::runtime_error("no such tool");
        }
        KruvTask::startTask();
        if (m_starts) {
            m_starts->append(title());
        }
    }

    void stopTask() override
    {
        if (!error() && m_kind == Kind::Conversion) {
            results()->setHasResults(false);
        }
        KruvTask::stopTask();
        notifyQueue();
    }

    qint64 estimatedWork() const override { return work; }
    QStringList remarks() const override { return remark.isEmpty() ? QStringList() : QStringList{remark}; }

    void succeed() { stopTask(); }
    void failWith(const QString &reason)
    {
        fail(reason);
        stopTask();
    }
    void say(const QString &text) { appendResults(text); }

    qint64 work = 0;
    QString remark = {};
    bool cannotStart = false;

protected:
    void stopRunning() override { stopTask(); }

private:
    QStringList *m_starts;
    Kind m_kind;
};

using Jobs = std::vector<std::shared_ptr<FakeJob>>;

/// Jobs "1", "2", ... that share one result set, not queued yet.
inline Jobs makeSet(TaskCompletionSink &queue, int count, QStringList *starts = nullptr,
                    FakeJob::Kind kind = FakeJob::Kind::Conversion)
{
    const auto results = std::make_shared<KruvTaskResults>();
    Jobs jobs;
    for (int number = 1; number <= count; ++number) {
        jobs.push_back(std::make_shared<FakeJob>(&queue, QString::number(number), starts, kind));
        jobs.back()->setResults(results);
        results->addTaskInSet(*jobs.back());
    }
    return jobs;
}

inline void addAll(KruvTaskQueue &queue, const Jobs &jobs)
{
    queue.addTasks(std::vector<std::shared_ptr<KruvTask>>(jobs.begin(), jobs.end()));
}

inline int running(const Jobs &jobs)
{
    return static_cast<int>(
        std::count_if(jobs.begin(), jobs.end(), [](const auto &job) { return job->isActive(); }));
}

} // namespace kruv::test
