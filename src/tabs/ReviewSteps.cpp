// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ReviewSteps.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "formats/Formats.h"
#include "tabs/BaseTab.h"
#include "tabs/LossQuestion.h"
#include "tabs/Plan.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTask.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <numeric>

namespace kruv::ReviewSteps {

namespace {

constexpr int mostThreads = 4;

/// Each kind's first entries stand first afterwards. Returns how many those are.
std::size_t orderLooks(std::vector<std::size_t> &order, const std::vector<OutputPlan::Entry> &entries)
{
    QSet<QString> seen;
    std::vector<std::size_t> first;
    std::vector<std::size_t> rest;
    for (const std::size_t index : order) {
        const OutputPlan::Entry &entry = entries[index];
        const qsizetype before = seen.size();
        seen.insert(entry.folder + u'/' + PathNames::fileType(entry.source));
        (seen.size() > before ? first : rest).push_back(index);
    }
    order = first;
    order.insert(order.end(), rest.begin(), rest.end());
    return first.size();
}

/// The lists of a plan, and those that were left out of it.
void addLists(std::vector<PlanEntry> &entries, const OutputPlan &plan, const OutputPlan &base)
{
    QSet<QString> made;
    for (const OutputPlan::List &list : plan.lists()) {
        made.insert(list.path);
        entries.push_back({.output = list.path,
                           .action = FileCommit::isTaken(list.path) ? PlanEntry::Action::Replace
                                                                    : PlanEntry::Action::Make});
    }
    if (plan.lists().size() == base.lists().size()) {
        return; // under other names, perhaps
    }
    for (const OutputPlan::List &list : base.lists()) {
        if (!made.contains(list.path)) {
            entries.push_back({.output = list.path, .action = PlanEntry::Action::SkipExisting});
        }
    }
}

/// What is lost with the originals.
void lookAtLosses(std::vector<Look> &looks, const Command &command, const QStringList &sources,
                  const std::stop_token &stop)
{
    const LossQuestion::Run run = LossQuestion::runOf(command.order, sources);
    const LossQuestion::Found found = LossQuestion::look(run, true, [&stop] { return stop.stop_requested(); });
    const QSet<QString> changed(found.changed.begin(), found.changed.end());
    for (qsizetype index = 0; index < sources.size(); ++index) {
        Look &look = looks[static_cast<std::size_t>(index)];
        const TagLosses losses = found.losses.value(sources[index]);
        look.loss = losses.isAny() ? losses.loss(run.label) : QString();
        look.isChanged = changed.contains(sources[index]);
    }
}

/// Of all of these, asked of the very jobs that would be made of them.
std::vector<Look> looksAt(const Command &command, const std::vector<OutputPlan::Entry> &entries,
                          TaskCompletionSink *queue, const std::stop_token &stop)
{
    const ConversionOrder::Jobs made = command.order.makeJobs(OutputPlan(entries, {}), queue);
    Plan plan;
    plan.addJobs(made.jobs, threadsForOneJob(mostThreads));
    QHash<QString, const PlanEntry *> planned;
    for (const PlanEntry &entry : plan.entries()) {
        planned.insert(entry.sources.value(0), &entry);
    }
    std::vector<Look> looks;
    QStringList sources;
    for (const OutputPlan::Entry &entry : entries) {
        sources.append(entry.source);
        const PlanEntry *found = planned.value(entry.source);
        looks.push_back(
            found ? Look{.isDone = true,
                         .refusal = found->reason,
                         .notes = found->notes,
                         .bytes = found->sourceBytes}
                  : Look{.isDone = true,
                         .refusal = BaseTab::withoutJobText(command.order.target->label.toString())});
    }
    if (command.order.deletes) {
        lookAtLosses(looks, command, sources, stop);
    }
    return looks;
}

} // namespace

Base base(const Command &command, std::size_t threads, const std::stop_token &stop)
{
    Base base{.plan =
                  OutputPlan(command.files, command.place, command.order.target->extension())};
    base.plan.refuseCollisions();
    base.lossy = command.order.lossyAmong(command.files, threads, [&stop] { return stop.stop_requested(); });
    base.lookOrder.resize(base.plan.entries().size());
    std::iota(base.lookOrder.begin(), base.lookOrder.end(), std::size_t{0});
    base.firstLooks = orderLooks(base.lookOrder, base.plan.entries());
    return base;
}

std::vector<std::size_t> rowsOf(const OutputPlan &plan, const QStringList &files)
{
    std::vector<std::size_t> rows;
    rows.reserve(plan.entries().size());
    qsizetype row = 0;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        while (files[row] != entry.source) {
            ++row;
        }
        rows.push_back(static_cast<std::size_t>(row));
    }
    return rows;
}

Settled settled(const Command &command, const OutputPlan &base, ExistingFiles choice)
{
    Settled settled{.plan = base};
    settled.existing = base.existing().size();
    if (settled.existing > 0) {
        settled.plan.settleExisting(choice);
    }
    if (!command.place.roots.isEmpty()) {
        settled.warnings = settled.plan.merges();
    }
    settled.entries.resize(static_cast<std::size_t>(command.files.size()));
    const std::vector<std::size_t> rows = rowsOf(settled.plan, command.files);
    for (std::size_t index = 0; index < rows.size(); ++index) {
        const OutputPlan::Entry &entry = settled.plan.entries()[index];
        settled.entries[rows[index]] = {.sources = {entry.source},
                                        .output = entry.output,
                                        .action = entry.mayReplace ? PlanEntry::Action::Replace
                                                                   : PlanEntry::Action::Make};
    }
    QHash<QString, PlanEntry> leftOut;
    for (const PlanEntry &entry : settled.plan.leftOut()) {
        leftOut.insert(entry.sources.value(0), entry);
    }
    for (qsizetype row = 0; row < command.files.size() && !leftOut.isEmpty(); ++row) {
        if (const auto found = leftOut.constFind(command.files[row]); found != leftOut.constEnd()) {
            settled.entries[static_cast<std::size_t>(row)] = *found;
        }
    }
    addLists(settled.entries, settled.plan, base);
    return settled;
}

std::vector<Look> looks(const Command &command, const Base &base, std::size_t from, TaskCompletionSink *queue,
                        const std::stop_token &stop)
{
    constexpr std::size_t atOnce = 64;
    constexpr qint64 shortTime = 80; // milliseconds
    QElapsedTimer time;
    time.start();
    std::vector<Look> all;
    while (from + all.size() < base.lookOrder.size() && time.elapsed() < shortTime && !stop.stop_requested()) {
        std::vector<OutputPlan::Entry> entries;
        const std::size_t begin = from + all.size();
        for (std::size_t at = begin; at < std::min(begin + atOnce, base.lookOrder.size()); ++at) {
            entries.push_back(base.plan.entries()[base.lookOrder[at]]);
        }
        std::ranges::move(looksAt(command, entries, queue, stop), std::back_inserter(all));
    }
    return all;
}

} // namespace kruv::ReviewSteps
