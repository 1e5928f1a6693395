// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ResumeVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/JobSession.h"
#include "cli/MakeHistoryReport.h"
#include "cli/MakeReporter.h"
#include "cli/UsageError.h"
#include "journal/JournalFile.h"
#include "tabs/Resumption.h"
#include "tasks/RunRecorder.h"

#include <algorithm>

namespace kruv {

ResumeVerb::ResumeVerb(CLI::App &parent)
    : Verb(parent, "resume", tr("Do what is left of a conversion that was broken off or canceled"))
{
    addOption("run", m_run, tr("Its number, as kruv history shows it (default: the latest)"))
        ->type_name("RUN");
    CLI::Option *lists = addFlag("--list", m_lists, tr("List the runs that can be resumed"));
    addFlag("--failed", m_triesAgain, tr("Try again what failed, too"));
    addFlag("--discard", m_discards, tr("Forget that there is something left, and do nothing"))
        ->excludes(lists);
    declareRunFlags(m_options);
    setFooter(tr("What was written and is still as it was is not done again. Example: after a power cut\n"
                 "  kruv resume"));
}

int ResumeVerb::run()
{
    const auto runs = Resumption::candidates(jobs());
    if (m_lists) {
        listRuns(runs, m_options.json ? HistoryForm::Json : HistoryForm::Text);
        return Success;
    }
    if (runs.empty() && m_run == 0) {
        Console::complain(tr("there is nothing to resume"));
        return Success;
    }
    const HistoryRun run = choose(runs);
    if (m_discards) {
        Resumption::forget(run);
        return Success;
    }
    return resume(run);
}

History::Jobs ResumeVerb::jobs() const
{
    return m_triesAgain ? History::Jobs::NotDoneOrFailed : History::Jobs::NotDone;
}

HistoryRun ResumeVerb::choose(const std::vector<HistoryRun> &runs) const
{
    if (m_run == 0) {
        return runs.front();
    }
    const auto found = std::ranges::find(runs, m_run, &HistoryRun::id);
    if (found != runs.end()) {
        return *found;
    }
    const auto known = History(JournalFile::usualPath()).run(m_run);
    if (!known) {
        throw UsageError(tr("there is no run %1; kruv history lists those there are").arg(m_run));
    }
    if (!RunRecorder::isOver(*known)) {
        throw UsageError(tr("run %1 is still going on").arg(m_run));
    }
    if (known->plan.isEmpty() && known->done + known->failed < known->all) {
        throw UsageError(tr("run %1 is no conversion; give its command again: kruv %2")
                             .arg(QString::number(m_run), known->arguments.join(u' ')));
    }
    throw UsageError(tr("run %1 has nothing left to be done").arg(m_run));
}

int ResumeVerb::resume(const HistoryRun &run) const
{
    JobSession session(m_options, makeReporter(m_options));
    KruvController &controller = session.controller();
    Resumption resumption(run, jobs());
    if (!resumption.take()) {
        throw UsageError(tr("run %1 is being resumed by another process").arg(run.id));
    }
    if (!m_options.quiet) {
        session.userInterface().remark(tr("Run %1: %2 of %n job(s) need not be done again.", nullptr,
                                          static_cast<int>(resumption.jobs()))
                                           .arg(run.id)
                                           .arg(resumption.jobsDone()));
    }
    session.queueRun().leaveOutResults();
    session.queueRun().run([&] { resumption.queueJobs(controller.taskQueue(), controller.runRecorder()); });
    resumption.sweepFolders(); // once more, for tools that had not ended before
    return session.finish();
}

} // namespace kruv
