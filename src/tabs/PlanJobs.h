// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanFile.h"
#include "tabs/PlanRoots.h"

#include <QCoreApplication>

namespace kruv {

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

    /// Hands the queue what is left of the wanted entries.
    void submit(const PlanFile::Wanted &wanted, PlanResultsFile &results);
    /// The same for what is written about the outputs once they are all there. Throws std::runtime_error
    /// where that would replace what nobody agreed to.
    void submitLists(PlanResultsFile &results);

private:
    OutputPlan::Entry entryOf(const OutputPlan::Entry &what) const;
    std::vector<OutputPlan::List> lists() const;

    const PlanFile &m_plan;
    const PlanRoots &m_roots;
    TabHost &m_host;
};

} // namespace kruv
