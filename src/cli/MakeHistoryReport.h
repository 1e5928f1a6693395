// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/HistoryReport.h"

#include <memory>
#include <vector>

namespace kruv {

enum class HistoryForm { Text, Json, Csv };

std::unique_ptr<HistoryReport> makeHistoryReport(HistoryForm form);

/// Shows these runs, and nothing of their jobs.
void listRuns(const std::vector<HistoryRun> &runs, HistoryForm form);

} // namespace kruv
