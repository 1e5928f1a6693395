// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/CommonOptions.h"
#include "cli/Verb.h"
#include "tabs/PlanFile.h"
#include "tabs/PlanRoots.h"
#include "tabs/PlanShard.h"

#include <QCoreApplication>

#include <optional>
#include <string>
#include <vector>

namespace kruv {

class JobSession;
class PlanStates;

/// `kruv run`: does what --save-plan wrote down, or a part of it, and tells how far all runs of it have come.
class RunVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::RunVerb)
public:
    explicit RunVerb(CLI::App &parent);

    int run() override;

private:
    std::optional<PlanShard> shard() const;
    PlanRoots roots() const;
    QString resultsFolder() const;
    /// The audio of the shard, or of the whole plan, which must outlive it.
    static PlanFile::Wanted wanted(const PlanFile &plan, const std::optional<PlanShard> &shard);
    int tellStatus(const PlanFile &plan, const PlanRoots &roots) const;
    int runJobs(const PlanFile &plan, const PlanRoots &roots) const;
    /// What is left of the wanted entries.
    void runEntries(JobSession &session, const PlanFile &plan, const PlanRoots &roots) const;
    /// What comes last, where nothing else is left. Returns whether that was so.
    bool finish(JobSession &session, const PlanFile &plan, const PlanRoots &roots) const;

    CommonOptions m_options;
    std::string m_plan;
    std::string m_shard;
    std::string m_results;
    std::vector<std::string> m_roots;
    bool m_tellsStatus = false;
    bool m_runsMissing = false;
    bool m_finishes = false;
};

} // namespace kruv
