// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/HistoryReport.h"

#include <QStringList>

#include <utility>

namespace kruv {

/// Lines of comma-separated values, quoted where they need it.
class HistoryCsv : public HistoryReport
{
public:
    explicit HistoryCsv(Sink write)
        : m_write(std::move(write))
    {
    }

    void beginRuns() override;
    void run(const HistoryRun &run) override;
    void beginEntriesOf(const HistoryRun &run) override;
    void beginFound() override;
    void entry(const HistoryEntry &entry) override;

private:
    void write(const QStringList &values);
    void nameEntryColumns();

    const Sink m_write;
};

} // namespace kruv
