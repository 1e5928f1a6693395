// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/HistoryReport.h"

#include <QJsonObject>

#include <utility>

namespace kruv {

/// One JSON object a line.
class HistoryJson : public HistoryReport
{
public:
    explicit HistoryJson(Sink write)
        : m_write(std::move(write))
    {
    }

    void run(const HistoryRun &run) override;
    void beginEntriesOf(const HistoryRun &run) override;
    void entry(const HistoryEntry &entry) override;

private:
    void write(const QJsonObject &object);

    const Sink m_write;
};

} // namespace kruv
