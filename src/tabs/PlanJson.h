// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/Plan.h"

#include <QJsonObject>

/// A plan for programs.
namespace kruv::PlanJson {

QJsonObject entry(const PlanEntry &entry);
QJsonObject totals(const Plan::Totals &totals);

} // namespace kruv::PlanJson
