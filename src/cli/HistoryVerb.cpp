// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/HistoryVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/MakeHistoryReport.h"
#include "cli/ReadJournal.h"
#include "cli/UsageError.h"

namespace kruv {

HistoryVerb::HistoryVerb(CLI::App &parent, What what, const std::shared_ptr<Flags> &flags)
    : Verb(parent, nameOf(what), descriptionOf(what))
    , m_what(what)
    , m_flags(flags)
{
    addFlag("--json", m_flags->json, tr("One JSON object a line"));
    addFlag("--csv", m_flags->csv, tr("Comma-separated values, with a line of names first"));
    if (what == What::OneRun) {
        addRunNumber(m_run, tr("Its number, as kruv history shows it"))->required();
    } else if (what == What::File) {
        addOption("file", m_file, tr("A path, a part of one, or the MD5 of the samples"))
            ->required()
            ->type_name("PATH");
        setFooter(tr("Example: whether the file is still as it was made, and where its original is\n"
                     "  kruv history find song.flac"));
    }
}

std::string HistoryVerb::nameOf(What what)
{
    switch (what) {
    case What::OneRun:
        return "show";
    case What::File:
        return "find";
    case What::Runs:
        break;
    }
    return "history";
}

QString HistoryVerb::descriptionOf(What what)
{
    switch (what) {
    case What::OneRun:
        return tr("Show what one run did with each of its files");
    case What::File:
        return tr("Show what became of a file, or of all below a folder");
    case What::Runs:
        break;
    }
    return tr("List what was run, the latest first");
}

void HistoryVerb::addAll(CLI::App &app, std::vector<std::unique_ptr<Verb>> &verbs)
{
    const auto flags = std::make_shared<Flags>();
    std::unique_ptr<HistoryVerb> runs(new HistoryVerb(app, What::Runs, flags));
    // Those below it come first, for it counts as given with them.
    for (const What what : {What::OneRun, What::File}) {
        verbs.push_back(std::unique_ptr<HistoryVerb>(new HistoryVerb(runs->app(), what, flags)));
    }
    verbs.push_back(std::move(runs));
}

std::unique_ptr<HistoryReport> HistoryVerb::makeReport() const
{
    if (m_flags->json && m_flags->csv) {
        throw UsageError(tr("--json and --csv exclude each other"));
    }
    return makeHistoryReport(m_flags->json  ? HistoryForm::Json
                             : m_flags->csv ? HistoryForm::Csv
                                            : HistoryForm::Text);
}

int HistoryVerb::run()
{
    const auto report = makeReport();
    int status = Success;
    readJournal([&](const QString &path) { status = tell(History(path), *report); });
    return status;
}

int HistoryVerb::tell(const History &history, HistoryReport &report) const
{
    switch (m_what) {
    case What::OneRun:
        return tellRun(history, report);
    case What::File:
        return tellFile(history, report);
    case What::Runs:
        break;
    }
    return tellRuns(history, report);
}

int HistoryVerb::tellRuns(const History &history, HistoryReport &report) const
{
    report.beginRuns();
    bool any = false;
    history.forEachRun([&](const HistoryRun &run) {
        any = true;
        report.run(run);
    });
    if (!any) {
        Console::complain(tr("nothing is recorded yet"));
    }
    return Success;
}

int HistoryVerb::tellRun(const History &history, HistoryReport &report) const
{
    const auto run = history.run(m_run);
    if (!run) {
        Console::complain(tr("there is no run %1; kruv history lists those there are").arg(m_run));
        return Failure;
    }
    report.beginEntriesOf(*run);
    history.forEachEntryOf(m_run, [&report](const HistoryEntry &entry) { report.entry(entry); });
    return Success;
}

int HistoryVerb::tellFile(const History &history, HistoryReport &report) const
{
    const QString given = QString::fromStdString(m_file);
    if (given.isEmpty()) {
        throw UsageError(tr("find: name a file, a part of its path, or a digest"));
    }
    report.beginFound();
    bool any = false;
    history.find(History::Question::from(given), [&](const HistoryEntry &entry) {
        any = true;
        report.entry(entry);
    });
    if (!any) {
        Console::complain(tr("%1: nothing is recorded of it").arg(Console::printable(given)));
    }
    return any ? Success : Failure;
}

} // namespace kruv
