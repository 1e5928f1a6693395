// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanFile.h"
#include "tabs/PlanRoots.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace kruv {

class KruvTask;
class PlanResultsFile;
class PlanStates;
class TabHost;

/// Makes the jobs of a plan that is on disk, by the code that would have made them when it was planned.
class PlanJobs
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PlanJobs)
public:
    /// What they name must outlive it.
    PlanJobs(const PlanFile &plan, const PlanRoots &roots, TabHost &host);

    /// Hands the queue the wanted entries.
    void submit(const PlanFile::Wanted &wanted, PlanResultsFile &results);
    /// The same for what comes once all audio is there: copies of other files, in which the new names may
    /// stand, and lists. Throws std::runtime_error where a list would replace what nobody agreed to.
    void submitRest(const PlanStates &states, PlanResultsFile &results);

private:
    using Jobs = std::vector<std::shared_ptr<KruvTask>>;
    OutputPlan::Entry entryOf(const OutputPlan::Entry &what) const;
    /// `numbers`: of the entries of `part`.
    Jobs makeJobs(const OutputPlan &part, const std::vector<std::size_t> &numbers, PlanResultsFile &results);
    std::vector<OutputPlan::List> lists() const;

    const PlanFile &m_plan;
    const PlanRoots &m_roots;
    TabHost &m_host;
};

} // namespace kruv
