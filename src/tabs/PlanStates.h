// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/PlanFile.h"

#include <QString>
#include <QStringList>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace kruv {

class PlanRoots;
struct FileStamp;

namespace PlanResults {
struct Line;
}

/// How far a plan, or a part of it, has come, by the results of all runs and by what lies on the disk.
class PlanStates
{
public:
    enum class State {
        /// Nothing tells of it.
        Left,
        /// Its output is there, but no result tells of that.
        Found,
        /// It was tried, and nothing was made.
        Failed,
        /// Its output is there, but lacks something. Made once more it would lack the same.
        Flawed,
        /// Its output is there, as it was left.
        Done
    };

    /// `results`: the folder. Of other entries than the wanted ones nothing is known.
    PlanStates(const PlanFile &plan, const PlanRoots &roots, const QString &results,
               const PlanFile::Wanted &wanted);

    State of(std::size_t entry) const { return m_states[entry]; }
    /// Why it failed.
    QString reason(std::size_t entry) const;
    /// Whether there is nothing to be done about it any more.
    bool isOver(std::size_t entry) const { return m_states[entry] >= State::Flawed; }
    bool listsAreDone() const { return m_listsAreDone; }
    /// What runs did, as texts; one that did the whole plan has an empty one.
    const QStringList &shards() const { return m_shards; }

private:
    void look(const PlanFile &plan, const PlanRoots &roots, const PlanFile::Wanted &wanted);
    void learn(const PlanResults::Line &line, const PlanFile::Wanted &wanted);
    void raise(std::size_t entry, State state);

    std::vector<State> m_states;
    std::unordered_map<std::size_t, FileStamp> m_outputs; // that are there
    std::unordered_map<std::size_t, QString> m_reasons;
    bool m_listsAreDone = false;
    QStringList m_shards;
};

} // namespace kruv
