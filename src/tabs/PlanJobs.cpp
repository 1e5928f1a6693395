// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanJobs.h"

#include "base/PathNames.h"
#include "base/UserInterface.h"
#include "formats/Format.h"
#include "tabs/PlanResultsFile.h"
#include "tabs/PlanStates.h"
#include "tabs/TabHost.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"

#include <stdexcept>

namespace kruv {

namespace {

/// Of the run, for the journal.
const QString commandName = QStringLiteral("run");

} // namespace

PlanJobs::PlanJobs(const PlanFile &plan, const PlanRoots &roots, TabHost &host)
    : m_plan(plan)
    , m_roots(roots)
    , m_host(host)
{
}

/// What is there although nothing is to be replaced may have been made by a run that was killed before it
/// could tell, or by another one that is at the same entries.
OutputPlan::Entry PlanJobs::entryOf(const OutputPlan::Entry &what) const
{
    OutputPlan::Entry entry = what;
    entry.source = m_roots.moved(what.source);
    entry.output = m_roots.moved(what.output);
    entry.folder = PathNames::folderOf(entry.output);
    const auto there = FileStamp::of(entry.output);
    const bool isTheOldOne = there && what.replaced && there->size == what.replaced->size &&
                             there->seconds == what.replaced->seconds;
    entry.mayReplace = what.mayReplace && isTheOldOne;
    if (entry.mayReplace) {
        entry.replaced = there;
        return entry;
    }
    // The length of a lossy file proves nothing of one that was there before there was a plan.
    const bool isForeign = m_plan.order().target->isLossy() && there && !there->isNoOlderThan(m_plan.made());
    entry.earlier = isForeign ? ConversionRequest::Earlier::None : ConversionRequest::Earlier::Kept;
    entry.goneSince = m_plan.order().deletes ? m_plan.made() : 0;
    return entry;
}

void PlanJobs::submit(const PlanFile::Wanted &wanted, PlanResultsFile &results)
{
    std::vector<std::size_t> numbers;
    OutputPlan part({}, {});
    m_plan.forEach(wanted, [&](std::size_t number, const OutputPlan::Entry &what) {
        numbers.push_back(number);
        part.addEntry(entryOf(what));
    });
    m_host.submit(commandName, makeJobs(part, numbers, results), m_plan.order().toText(OutputPlan({}, {})));
}

PlanJobs::Jobs PlanJobs::makeJobs(const OutputPlan &part, const std::vector<std::size_t> &numbers,
                                  PlanResultsFile &results)
{
    const ConversionOrder::Jobs made = m_plan.order().makeJobs(part, &m_host.taskQueue());
    auto job = made.jobs.begin();
    for (std::size_t index = 0; index < numbers.size(); ++index) {
        const OutputPlan::Entry &entry = part.entries()[index];
        if (made.withoutJob.contains(entry.source)) {
            const QString reason =
                tr("This version can't convert it to %1.").arg(m_plan.order().target->label.toString());
            results.addFailure(numbers[index], entry.source, reason);
            m_host.userInterface().alert(reason, entry.source, {});
        } else if (!entry.isDone) {
            results.follow(**job++, numbers[index]);
        }
    }
    return made.jobs;
}

std::vector<OutputPlan::List> PlanJobs::lists() const
{
    std::vector<OutputPlan::List> moved = m_plan.lists();
    for (OutputPlan::List &list : moved) {
        list.path = m_roots.moved(list.path);
        list.folder = m_roots.moved(list.folder);
        if (!m_plan.replacesLists() && FileCommit::isTaken(list.path)) {
            throw std::runtime_error(
                tr("%1 is there already, and no run of this plan wrote it; move it away.")
                    .arg(list.path)
                    .toStdString());
        }
    }
    return moved;
}

void PlanJobs::submitRest(const PlanStates &states, PlanResultsFile &results)
{
    std::vector<std::size_t> numbers;
    OutputPlan whole({}, states.listsAreDone() ? std::vector<OutputPlan::List>() : lists());
    m_plan.forEach([](std::size_t) { return true; },
                   [&](std::size_t number, const OutputPlan::Entry &what) {
                       OutputPlan::Entry entry = entryOf(what);
                       entry.isDone = !entry.isCopy || states.isOver(number);
                       numbers.push_back(number);
                       whole.addEntry(entry);
                   });
    Jobs jobs = makeJobs(OutputPlan(whole.entries(), {}), numbers, results);
    const Jobs lists = m_plan.order().listJobs(whole, &m_host.taskQueue());
    jobs.insert(jobs.end(), lists.begin(), lists.end());
    m_host.submit(commandName, jobs, {});
}

} // namespace kruv
