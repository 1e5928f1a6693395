// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/Verb.h"
#include "journal/History.h"

#include <QCoreApplication>

#include <memory>
#include <vector>

namespace kruv {

class HistoryReport;

/// `kruv history`: which commands were run, what each did with its files, and what became of a file.
class HistoryVerb : public Verb
{
    Q_DECLARE_TR_FUNCTIONS(kruv::HistoryVerb)
public:
    /// The command and those below it.
    static void addAll(CLI::App &app, std::vector<std::unique_ptr<Verb>> &verbs);

    int run() override;

private:
    enum class What { Runs, OneRun, File };
    /// One for all of them: flags count wherever they stand.
    struct Flags
    {
        bool json = false;
        bool csv = false;
    };

    HistoryVerb(CLI::App &parent, What what, const std::shared_ptr<Flags> &flags);
    static std::string nameOf(What what);
    static QString descriptionOf(What what);
    std::unique_ptr<HistoryReport> makeReport() const;
    int tell(const History &history, HistoryReport &report) const;
    int tellRuns(const History &history, HistoryReport &report) const;
    int tellRun(const History &history, HistoryReport &report) const;
    int tellFile(const History &history, HistoryReport &report) const;

    const What m_what;
    const std::shared_ptr<Flags> m_flags;
    std::int64_t m_run = 0;
    std::string m_file;
};

} // namespace kruv
