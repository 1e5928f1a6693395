// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/CommonOptions.h"
#include "cli/Verb.h"
#include "journal/HistoryRun.h"

#include <QCoreApplication>

namespace kruv {

/// `kruv undo`: takes back what a run did.
class UndoVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UndoVerb)
public:
    explicit UndoVerb(CLI::App &parent);

    int run() override;

private:
    /// The run that was named; throws where nothing of it can be taken back.
    HistoryRun named() const;
    void tell(const HistoryRun &run) const;
    int undo(const HistoryRun &run) const;

    CommonOptions m_options;
    std::int64_t m_run = 0;
    bool m_lists = false;
};

} // namespace kruv
