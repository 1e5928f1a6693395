// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanEntry.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace kruv {

class KruvTask;
struct DoneRecord;

/// What making one output takes.
struct Cost
{
    qint64 bytes = 0;
    double seconds = 0.0; ///< of one job
};

/// What a command is going to do, file by file, before anything is done. Made of the very jobs that would do
/// it, and of what there is no job for.
class Plan
{
public:
    const std::vector<PlanEntry> &entries() const { return m_entries; }

    void add(const PlanEntry &entry) { m_entries.push_back(entry); }
    /// An entry a file of each job, which is asked whether it would fail. The jobs are not to start.
    /// Several files are looked at at once, `threads` of them.
    void addJobs(std::span<const std::shared_ptr<KruvTask>> jobs, std::size_t threads);
    void addRecords(std::span<const DoneRecord> records);

    /// What its jobs can be made from once more, with the entries (ConversionOrder::toText); empty where
    /// they can't.
    const QString &order() const { return m_order; }
    void setOrder(const QString &order) { m_order = order; }

    /// What a person should know of it all, sentences.
    const QStringList &warnings() const { return m_warnings; }
    void warn(const QString &sentence) { m_warnings.append(sentence); }

    /// One of its disks is too small for it.
    bool isShortOfSpace() const { return m_isShortOfSpace; }
    void setShortOfSpace() { m_isShortOfSpace = true; }

    using Test = std::function<bool(const PlanEntry &entry)>;
    /// What the entries will cost, where `costOf` knows. `costOf` is asked of one source and its bytes.
    using CostOf = std::function<std::optional<Cost>(const QString &source, qint64 bytes)>;
    void estimate(const CostOf &costOf, int jobsAtOnce);
    /// Of the disks that are too small, a sentence each. `freesOriginals`: originals that go leave room.
    QStringList shortages(bool freesOriginals) const;
    /// Refuses those entries that would be made and that `test` holds for.
    void refuse(const Test &test, const QString &reason);

    struct Totals
    {
        qsizetype made = 0; ///< renamed and worked on too
        qsizetype replaced = 0;
        qsizetype skipped = 0;
        qsizetype refused = 0;
        qsizetype originalsDeleted = 0;
        qint64 sourceBytes = 0; ///< of what is made
        qint64 bytes = 0;       ///< 0 where they are not known of nearly all
        double seconds = 0.0;   ///< by the clock; the same
    };
    Totals totals() const;

private:
    std::vector<PlanEntry> m_entries;
    QStringList m_warnings;
    int m_jobsAtOnce = 1;
    bool m_isShortOfSpace = false;
    QString m_order;
};

} // namespace kruv
