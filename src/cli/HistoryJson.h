// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/HistoryReport.h"

namespace kruv {

/// One JSON object a line.
class HistoryJson : public HistoryReport
{
public:
    void run(const HistoryRun &run) override;
    void beginEntriesOf(const HistoryRun &run) override;
    void entry(const HistoryEntry &entry) override;
};

} // namespace kruv
