// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Plan.h"

/// A plan on standard output.
namespace kruv::PlanText {

enum class Which { All, LeftOut };
/// An entry a line, and what is to be known of it on lines of their own; the totals last.
void write(const Plan &plan, Which which);
/// The same, one JSON object a line.
void writeJson(const Plan &plan);

} // namespace kruv::PlanText
