// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/MakeHistoryReport.h"

#include "cli/Console.h"
#include "cli/HistoryText.h"
#include "tabs/HistoryCsv.h"
#include "tabs/HistoryJson.h"

namespace kruv {

std::unique_ptr<HistoryReport> makeHistoryReport(HistoryForm form)
{
    switch (form) {
    case HistoryForm::Json:
        return std::make_unique<HistoryJson>(Console::writeOut);
    case HistoryForm::Csv:
        return std::make_unique<HistoryCsv>(Console::writeOut);
    case HistoryForm::Text:
        break;
    }
    return std::make_unique<HistoryText>();
}

void listRuns(const std::vector<HistoryRun> &runs, HistoryForm form)
{
    const auto report = makeHistoryReport(form);
    report->beginRuns();
    for (const HistoryRun &run : runs) {
        report->run(run);
    }
}

} // namespace kruv
