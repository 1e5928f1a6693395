// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/PlanStatusText.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "tabs/PlanRoots.h"
#include "tabs/PlanShard.h"

#include <QJsonObject>

#include <algorithm>

namespace kruv {

PlanStatusText::PlanStatusText(const PlanFile &plan, const PlanRoots &roots, const PlanStates &states,
                               const PlanFile::Wanted &wanted)
    : m_plan(plan)
    , m_roots(roots)
    , m_states(states)
    , m_wanted(wanted)
{
    for (std::size_t entry = 0; entry < plan.size(); ++entry) {
        if (wanted(entry)) {
            add(m_whole, entry);
            m_missing += !plan.isCopy(entry) && !states.isOver(entry) ? 1 : 0;
            m_copiesLeft += plan.isCopy(entry) && !states.isOver(entry) ? 1 : 0;
        }
    }
}

void PlanStatusText::add(Count &count, std::size_t entry) const
{
    ++count.all;
    switch (m_states.of(entry)) {
    case PlanStates::State::Done:
        ++count.done;
        break;
    case PlanStates::State::Failed:
    case PlanStates::State::Flawed:
        ++count.failed;
        break;
    case PlanStates::State::Left:
    case PlanStates::State::Found:
        ++count.left;
        break;
    }
}

bool PlanStatusText::lacksRest() const
{
    return m_copiesLeft > 0 || (!m_plan.lists().empty() && !m_states.listsAreDone());
}

int PlanStatusText::shards() const
{
    int most = 0;
    for (const QString &text : m_states.shards()) {
        const auto shard = PlanShard::fromText(text);
        most = std::max(most, shard ? shard->count : 0);
    }
    return most;
}

std::vector<PlanStatusText::Count> PlanStatusText::countsOfShards() const
{
    std::vector<Count> counts(static_cast<std::size_t>(shards()));
    if (!counts.empty()) {
        const std::vector<int> dealt = PlanShard::deal(m_plan.costs(), shards());
        for (std::size_t entry = 0; entry < m_plan.size(); ++entry) {
            if (m_wanted(entry) && !m_plan.isCopy(entry)) {
                add(counts[static_cast<std::size_t>(dealt[entry]) - 1], entry);
            }
        }
    }
    return counts;
}

bool PlanStatusText::hasFailed(std::size_t entry) const
{
    const PlanStates::State state = m_states.of(entry);
    return state == PlanStates::State::Failed || state == PlanStates::State::Flawed;
}

QJsonObject PlanStatusText::json(const Count &count)
{
    return {{QStringLiteral("entries"), count.all},
            {QStringLiteral("done"), count.done},
            {QStringLiteral("failed"), count.failed},
            {QStringLiteral("left"), count.left}};
}

QString PlanStatusText::words(const Count &count)
{
    return tr("%1 done, %2 failed, %3 left of %4")
        .arg(QString::number(count.done), QString::number(count.failed), QString::number(count.left),
             QString::number(count.all));
}

void PlanStatusText::write() const
{
    const std::vector<Count> counts = countsOfShards();
    for (std::size_t shard = 0; shard < counts.size(); ++shard) {
        if (counts[shard].all > 0) {
            Console::writeOut(
                tr("Part %1 of %2: %3")
                    .arg(QString::number(shard + 1), QString::number(counts.size()), words(counts[shard])) +
                u'\n');
        }
    }
    m_plan.forEach([this](std::size_t entry) { return m_wanted(entry) && hasFailed(entry); },
                   [this](std::size_t entry, const OutputPlan::Entry &what) {
                       Console::writeOut(
                           tr("Failed: %1").arg(Console::printable(m_roots.moved(what.source))) + u'\n' +
                           QStringLiteral("  %1\n").arg(Console::printable(m_states.reason(entry))));
                   });
    Console::writeOut(words(m_whole) + u'\n');
    if (lacksRest()) {
        Console::writeOut(
            tr("What comes last is left, lists and other files: kruv run %1 --finish").arg(m_plan.path()) +
            u'\n');
    }
}

void PlanStatusText::writeJson() const
{
    const std::vector<Count> counts = countsOfShards();
    for (std::size_t shard = 0; shard < counts.size(); ++shard) {
        QJsonObject line = json(counts[shard]);
        line.insert(QStringLiteral("event"), QStringLiteral("shard"));
        line.insert(QStringLiteral("shard"),
                    PlanShard{static_cast<int>(shard) + 1, static_cast<int>(counts.size())}.toText());
        JsonReporter::writeLine(line);
    }
    m_plan.forEach([this](std::size_t entry) { return m_wanted(entry) && hasFailed(entry); },
                   [this](std::size_t entry, const OutputPlan::Entry &what) {
                       JsonReporter::writeLine({{QStringLiteral("event"), QStringLiteral("failed")},
                                                {QStringLiteral("input"), m_roots.moved(what.source)},
                                                {QStringLiteral("output"), m_roots.moved(what.output)},
                                                {QStringLiteral("reason"), m_states.reason(entry)}});
                   });
    QJsonObject line = json(m_whole);
    line.insert(QStringLiteral("event"), QStringLiteral("status"));
    line.insert(QStringLiteral("restLeft"), lacksRest());
    JsonReporter::writeLine(line);
}

void PlanStatusText::complainOfMissing() const
{
    constexpr int mostNamed = 5;
    int missing = 0;
    m_plan.forEach(
        [this](std::size_t entry) {
            return m_wanted(entry) && !m_plan.isCopy(entry) && !m_states.isOver(entry);
        },
        [&](std::size_t, const OutputPlan::Entry &what) {
            if (++missing <= mostNamed) {
                Console::complain(tr("missing: %1").arg(m_roots.moved(what.output)));
            }
        });
    if (missing > mostNamed) {
        Console::complain(tr("and %n more", nullptr, missing - mostNamed));
    }
    Console::complain(
        tr("the set is not complete; to do what is missing: kruv run %1 --missing").arg(m_plan.path()));
}

} // namespace kruv
