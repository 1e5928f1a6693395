// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/ListJob.h"

#include "base/InParallel.h"
#include "platform/MainThread.h"
#include "tasks/TaskCompletionSink.h"

#include <algorithm>
#include <chrono>

namespace kruv {

namespace {

constexpr qint64 unitsOfAFile = 1'000'000;

qint64 milliseconds()
{
    using namespace std::chrono;
    return duration_cast<std::chrono::milliseconds>(steady_clock::now().time_since_epoch()).count();
}

} // namespace

void ListJob::startTask()
{
    KruvTask::startTask();
    runInBackground([this] {
        if (!cancelled()) {
            doStartTask();
        }
    });
}

void ListJob::stopTask()
{
    // In one go on the main thread: jobs of a set that end at nearly the same time must not each find the set
    // done and show its results.
    MainThread::run([this] {
        if (!isReport() && !error()) {
            results()->setHasResults(false);
        }
        KruvTask::stopTask();
        notifyQueue();
    });
}

void ListJob::forEachFile(std::size_t count,
                          const std::function<void(std::size_t index, FileProgress &progress)> &work)
{
    m_units = 0;
    m_allUnits = std::max<qint64>(1, static_cast<qint64>(count) * unitsOfAFile);
    const std::size_t threads = queue() ? threadsForOneJob(queue()->maxThreads()) : 1;
    inParallel(
        count, threads, [this] { return cancelled(); },
        [&](std::size_t index) {
            FileProgress progress(*this);
            work(index, progress);
        });
}

void ListJob::advance(qint64 units)
{
    const qint64 done = m_units += units;
    setProgressIndicatorValue(100.0 * static_cast<double>(done) / static_cast<double>(m_allUnits));
    showProgress();
}

void ListJob::showProgress()
{
    constexpr qint64 apart = 50; // milliseconds
    const qint64 now = milliseconds();
    qint64 last = m_lastShown;
    if (now - last >= apart && m_lastShown.compare_exchange_strong(last, now)) {
        publish(&KruvTask::setCombinedStatus);
    }
}

void ListJob::showStatus(const QString &status)
{
    setTopTextFieldString(status);
    publish(&KruvTask::setCombinedStatus);
}

void ListJob::writeList(const TextOutput &list, const QString &text)
{
    const QString problem =
        list.write(text, error() ? TextOutput::Content::LacksFiles : TextOutput::Content::Whole);
    if (!problem.isEmpty()) {
        fail(tr("The list %1 could not be written: %2.").arg(list.path(), problem));
    }
}

ListJob::FileProgress::FileProgress(ListJob &job)
    : m_job(job)
{
}

ListJob::FileProgress::~FileProgress()
{
    set(1.0);
}

void ListJob::FileProgress::set(double share)
{
    const auto units = static_cast<qint64>(share * static_cast<double>(unitsOfAFile));
    if (units > m_reported) {
        m_job.advance(units - m_reported);
        m_reported = units;
    }
}

} // namespace kruv
