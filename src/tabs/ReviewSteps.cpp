// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/ReviewSteps.h"

#include "base/InParallel.h"
#include "base/PathNames.h"
#include "formats/Formats.h"
#include "tabs/BaseTab.h"
#include "tabs/Estimates.h"
#include "tabs/LossQuestion.h"
#include "tabs/Plan.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTask.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <span>

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
    const LossQuestion::Found found =
        LossQuestion::look(run, true, [&stop] { return stop.stop_requested(); });
    const QSet<QString> changed(found.changed.begin(), found.changed.end());
    for (qsizetype index = 0; index < sources.size(); ++index) {
        Look &look = looks[static_cast<std::size_t>(index)];
        const TagLosses losses = found.losses.value(sources[index]);
        look.loss = losses.isAny() ? losses.loss(run.label) : QString();
        look.isChanged = changed.contains(sources[index]);
    }
}

/// What the jobs say of themselves, or that there is none.
std::vector<Look> looksAt(std::span<const OutputPlan::Entry> entries,
                          std::span<const std::shared_ptr<KruvTask>> jobs, const QString &label)
{
    Plan plan;
    plan.addJobs(jobs, threadsForOneJob(mostThreads));
    std::vector<Look> looks;
    auto planned = plan.entries().begin();
    for (const OutputPlan::Entry &entry : entries) {
        const bool hasJob = planned != plan.entries().end() && planned->sources.value(0) == entry.source;
        looks.push_back(
            hasJob ? Look{.refusal = planned->reason, .notes = planned->notes, .bytes = planned->sourceBytes}
                   : Look{.refusal = BaseTab::withoutJobText(label)});
        planned += hasJob;
    }
    return looks;
}

} // namespace

Base base(const Command &command, std::size_t threads, const std::stop_token &stop)
{
    Base base{.plan = OutputPlan(command.files, command.place, command.order.target->extension(), threads)};
    base.estimates = std::make_shared<const Estimates>(command.order);
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

Settled settled(const Command &command, const Base &base, ExistingFiles choice)
{
    Settled settled{.plan = base.plan};
    settled.existing = base.plan.existing().size();
    if (settled.existing > 0) {
        settled.plan.settleExisting(choice);
    }
    if (!command.place.roots.isEmpty() || command.place.names) {
        settled.warnings = settled.plan.merges();
    }
    settled.warnings += base.estimates->shortages(settled.plan, command.order, command.freesOriginals);
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
    addLists(settled.entries, settled.plan, base.plan);
    return settled;
}

Slice slice(const Command &command, const Base &base, std::size_t from, TaskCompletionSink *queue)
{
    constexpr std::size_t most = 256;
    Slice slice;
    for (std::size_t at = from; at < std::min(from + most, base.lookOrder.size()); ++at) {
        slice.entries.push_back(base.plan.entries()[base.lookOrder[at]]);
    }
    slice.jobs = command.order.makeJobs(OutputPlan(slice.entries, {}), queue);
    return slice;
}

std::vector<Look> looks(const Command &command, const Slice &slice, const std::stop_token &stop)
{
    constexpr std::size_t atOnce = 16;
    constexpr qint64 shortTime = 80; // milliseconds
    const QSet<QString> withoutJob(slice.jobs.withoutJob.begin(), slice.jobs.withoutJob.end());
    QElapsedTimer time;
    time.start();
    std::vector<Look> all;
    std::size_t job = 0;
    while (all.size() < slice.entries.size() && time.elapsed() < shortTime && !stop.stop_requested()) {
        const auto entries = std::span(slice.entries).subspan(all.size());
        const auto some = entries.first(std::min(atOnce, entries.size()));
        QStringList sources;
        for (const OutputPlan::Entry &entry : some) {
            sources.append(entry.source);
        }
        const auto jobs = static_cast<std::size_t>(std::ranges::count_if(
            sources, [&withoutJob](const QString &source) { return !withoutJob.contains(source); }));
        std::vector<Look> looks = looksAt(some, std::span(slice.jobs.jobs).subspan(job, jobs),
                                          command.order.target->label.toString());
        if (command.order.deletes) {
            lookAtLosses(looks, command, sources, stop);
        }
        job += jobs;
        std::ranges::move(looks, std::back_inserter(all));
    }
    return all;
}

} // namespace kruv::ReviewSteps
