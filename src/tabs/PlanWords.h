// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Plan.h"

/// What of a plan is told, to persons and to programs.
namespace kruv::PlanWords {

/// For programs: "make".
QString id(PlanEntry::Action action);
/// For persons, one word.
QString action(const PlanEntry &entry);
/// Source and output, or what is worked on; of several sources how many.
QString paths(const PlanEntry &entry);
/// All that is to be known of an entry besides, a sentence or a clause each.
QStringList notes(const PlanEntry &entry);
/// The shortest that can be said of it all: "21 will be made · 2 are there already".
QString headline(const Plan &plan);
/// What is to be read and written, and how long it takes, a few words each.
QStringList costs(const Plan::Totals &totals);
/// In one sentence.
QString totals(const Plan::Totals &totals);

} // namespace kruv::PlanWords
