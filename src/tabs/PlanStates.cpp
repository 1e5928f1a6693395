// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanStates.h"

#include "base/FileStamp.h"
#include "tabs/PlanResults.h"
#include "tabs/PlanRoots.h"
#include "tasks/FileCommit.h"

#include <algorithm>

namespace kruv {

PlanStates::PlanStates(const PlanFile &plan, const PlanRoots &roots, const QString &results,
                       const PlanFile::Wanted &wanted)
    : m_states(plan.size(), State::Left)
{
    look(plan, roots, wanted);
    m_shards =
        PlanResults::read(results, plan.id(), [&](const PlanResults::Line &line) { learn(line, wanted); });
    m_listsAreDone =
        m_listsAreDone && std::ranges::all_of(plan.lists(), [&roots](const OutputPlan::List &list) {
            return FileCommit::isTaken(roots.moved(list.path));
        });
}

void PlanStates::look(const PlanFile &plan, const PlanRoots &roots, const PlanFile::Wanted &wanted)
{
    plan.forEach(wanted, [&](std::size_t entry, const OutputPlan::Entry &what) {
        if (what.isDone) {
            m_states[entry] = State::Done;
        } else if (const auto stamp = FileStamp::of(roots.moved(what.output))) {
            m_outputs[entry] = *stamp;
            m_states[entry] = what.mayReplace ? State::Left : State::Found; // it may be the old one
        }
    });
}

/// The lines come in any order.
void PlanStates::learn(const PlanResults::Line &line, const PlanFile::Wanted &wanted)
{
    if (!line.entry) {
        m_listsAreDone |= line.isDone;
        return;
    }
    const std::size_t entry = *line.entry;
    if (entry >= m_states.size() || !wanted(entry)) {
        return;
    }
    const auto output = m_outputs.find(entry);
    const bool isThere = output != m_outputs.end() && line.isOf(output->second);
    if (line.isDone && isThere) {
        raise(entry, State::Done);
    } else if (line.hasFailed) {
        raise(entry, isThere ? State::Flawed : State::Failed);
        m_reasons[entry] = line.reason;
    }
}

void PlanStates::raise(std::size_t entry, State state)
{
    m_states[entry] = std::max(m_states[entry], state);
}

QString PlanStates::reason(std::size_t entry) const
{
    const auto found = m_reasons.find(entry);
    return found == m_reasons.end() ? QString() : found->second;
}

} // namespace kruv
