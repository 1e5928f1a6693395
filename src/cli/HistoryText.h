// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tabs/HistoryReport.h"

#include <QCoreApplication>

namespace kruv {

/// Lines for a person.
class HistoryText : public HistoryReport
{
    Q_DECLARE_TR_FUNCTIONS(kruv::HistoryText)
public:
    /// What a run is called in a sentence: its number, what was done, and when.
    static QString nameOf(const HistoryRun &run);

    void run(const HistoryRun &run) override;
    void beginEntriesOf(const HistoryRun &run) override;
    void beginFound() override;
    void entry(const HistoryEntry &entry) override;

private:
    QString notesOn(const HistoryEntry &entry) const;

    bool m_tellsRuns = false; // jobs of several
};

} // namespace kruv
