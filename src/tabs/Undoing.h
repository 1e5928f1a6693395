// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/History.h"

#include <QObject>

#include <vector>

namespace kruv {

class Journal;
class KruvTaskQueue;

/// Takes back what a run did, job by job. Main thread; throws std::runtime_error for a journal that can't be
/// read.
class Undoing : public QObject
{
    Q_OBJECT
public:
    /// Runs that did something which can be taken back, the latest first. Those that took something back
    /// themselves are among them.
    static std::vector<HistoryRun> candidates();

    explicit Undoing(const HistoryRun &run);

    /// Queues what takes the run's jobs back, the last one first.
    void queueJobs(KruvTaskQueue &queue, Journal &journal);

    qsizetype jobs() const { return static_cast<qsizetype>(m_entries.size()); }
    /// Jobs of the run that did something of which nothing is known that takes it back.
    qsizetype othersDone() const { return m_othersDone; }

private:
    std::vector<HistoryEntry> m_entries; // to be taken back
    qsizetype m_othersDone = 0;
};

} // namespace kruv
