// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanFile.h"
#include "tabs/PlanStates.h"

#include <QCoreApplication>

#include <vector>

class QJsonObject;

namespace kruv {

class PlanRoots;

/// How far the runs of a plan have come, on standard output.
class PlanStatusText
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PlanStatusText)
public:
    /// What they name must outlive it.
    PlanStatusText(const PlanFile &plan, const PlanRoots &roots, const PlanStates &states,
                   const PlanFile::Wanted &wanted);

    void write() const;
    /// One JSON object a line: the shards, what failed, the whole.
    void writeJson() const;
    /// On standard error, the first few.
    void complainOfMissing() const;

    /// Whether no audio is left to be made or tried again.
    bool isOver() const { return m_missing == 0; }
    /// Whether what comes after that is left: lists, copies of other files.
    bool lacksRest() const;
    bool isDone() const { return m_whole.done == m_whole.all && !lacksRest(); }

private:
    struct Count
    {
        int all = 0;
        int done = 0;
        int failed = 0;
        int left = 0;
    };
    void add(Count &count, std::size_t entry) const;
    /// Into how many shards the runs cut the plan, the most where that differs; 0 where they did not.
    int shards() const;
    std::vector<Count> countsOfShards() const;
    bool hasFailed(std::size_t entry) const;
    static QJsonObject json(const Count &count);
    static QString words(const Count &count);

    const PlanFile &m_plan;
    const PlanRoots &m_roots;
    const PlanStates &m_states;
    const PlanFile::Wanted &m_wanted;
    Count m_whole;
    int m_missing = 0; // audio
    int m_copiesLeft = 0;
};

} // namespace kruv
