// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/HistoryReport.h"

namespace kruv {

/// Lines of comma-separated values, quoted where they need it.
class HistoryCsv : public HistoryReport
{
public:
    void beginRuns() override;
    void run(const HistoryRun &run) override;
    void beginEntriesOf(const HistoryRun &run) override;
    void beginFound() override;
    void entry(const HistoryEntry &entry) override;
};

} // namespace kruv
