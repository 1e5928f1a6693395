// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Estimates.h"

#include "base/PathNames.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "tabs/Plan.h"
#include "tasks/FileCommit.h"

#include <QFileInfo>

#include <stdexcept>

namespace kruv {

Estimates::Estimates(const ConversionOrder &order)
{
    try {
        learn(order);
    } catch (const std::runtime_error &) { // the run that follows says so
    }
}

void Estimates::learn(const ConversionOrder &order)
{
    constexpr int mostRuns = 200;
    constexpr std::size_t enough = 20; // of those that were alike
    constexpr int mostFiles = 300;     // of a run: the latest tell most
    const History history(JournalFile::usualPath());
    std::vector<std::int64_t> alike;
    history.forEachPlan(mostRuns, [&](std::int64_t run, const QString &plan) {
        const auto kept = alike.size() < enough ? ConversionOrder::fromText(plan) : std::nullopt;
        if (kept && order.makesTheSame(kept->order) && order.provesLike(kept->order)) {
            alike.push_back(run);
        }
    });
    for (const std::int64_t run : alike) {
        history.forEachConversionOf(run, mostFiles, [this](const History::Conversion &conversion) {
            Sum &sum = m_sums[PathNames::fileType(conversion.source)];
            ++sum.files;
            sum.sourceBytes += static_cast<double>(conversion.sourceSize);
            sum.outputBytes += static_cast<double>(conversion.outputSize);
            sum.seconds += conversion.seconds;
        });
    }
}

void Estimates::applyTo(Plan &plan, int jobsAtOnce) const
{
    plan.estimate([this](const QString &source, qint64 bytes) { return of(source, bytes); }, jobsAtOnce);
}

std::optional<Cost> Estimates::of(const QString &source, qint64 bytes) const
{
    constexpr int fewest = 5; // files that say something of others
    const auto found = m_sums.constFind(PathNames::fileType(source));
    if (found == m_sums.constEnd() || found->files < fewest || found->sourceBytes <= 0) {
        return std::nullopt;
    }
    const double share = static_cast<double>(bytes) / found->sourceBytes;
    return Cost{.bytes = static_cast<qint64>(share * found->outputBytes), .seconds = share * found->seconds};
}

QStringList Estimates::shortages(const OutputPlan &plan, const ConversionOrder &order,
                                 bool freesOriginals) const
{
    if (!areKnown()) {
        return {};
    }
    Plan costs;
    for (const OutputPlan::Entry &entry : plan.entries()) {
        if (!entry.isDone) {
            const bool replaces = entry.mayReplace && FileCommit::isTaken(entry.output);
            costs.add({.sources = {entry.source},
                       .output = entry.output,
                       .action = replaces ? PlanEntry::Action::Replace : PlanEntry::Action::Make,
                       .deletesOriginal = order.deletes && entry.keepReason.isEmpty(),
                       .sourceBytes = QFileInfo(entry.source).size()});
        }
    }
    applyTo(costs, 1);
    return costs.shortages(freesOriginals);
}

} // namespace kruv
