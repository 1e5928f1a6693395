// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/CommonOptions.h"
#include "cli/Verb.h"
#include "journal/History.h"

#include <QCoreApplication>

#include <vector>

namespace kruv {

/// `kruv resume`: does what is left of a run that was broken off or canceled.
class ResumeVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::ResumeVerb)
public:
    explicit ResumeVerb(CLI::App &parent);

    int run() override;

private:
    History::Jobs jobs() const;
    /// The one that was named, or the latest; throws where it can't be resumed.
    HistoryRun choose(const std::vector<HistoryRun> &runs) const;
    int resume(const HistoryRun &run) const;
    /// Runs its command with the files that are left.
    int giveAgain(const HistoryRun &run);
    static QString howToGiveAgain(const HistoryRun &run);
    static void sayWhatCannotGoOn(const std::vector<HistoryRun> &runs);

    CommonOptions m_options;
    std::int64_t m_run = 0;
    bool m_triesAgain = false;
    bool m_lists = false;
    bool m_discards = false;
};

} // namespace kruv
