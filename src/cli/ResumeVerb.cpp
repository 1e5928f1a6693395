// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/ResumeVerb.h"

#include "cli/CommandRest.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/JobSession.h"
#include "cli/MakeHistoryReport.h"
#include "cli/MakeReporter.h"
#include "cli/ReadJournal.h"
#include "cli/UsageError.h"
#include "journal/JournalFile.h"
#include "tabs/HistoryWords.h"
#include "tabs/Resumption.h"
#include "tabs/Undoing.h"

#include <algorithm>
#include <functional>

namespace kruv {

ResumeVerb::ResumeVerb(CLI::App &parent)
    : Verb(parent, "resume", tr("Do what is left of a run that was broken off or canceled"))
{
    addRunNumber(m_run, tr("Its number, as kruv history shows it (default: the latest)"));
    CLI::Option *lists = addFlag("--list", m_lists, tr("List the runs that can be resumed"));
    addFlag("--failed", m_triesAgain, tr("Try again what failed, too"));
    addFlag("--discard", m_discards, tr("Forget that there is something left, and do nothing"))
        ->excludes(lists);
    declareRunFlags(m_options);
    setFooter(
        tr("What was written and is still as it was is not done again. Of other commands than conversions,\n"
           "those that take file by file go on with the files that are left; others are named with what\n"
           "to type. Example: after a power cut\n"
           "  kruv resume"));
}

int ResumeVerb::run()
{
    auto runs = Resumption::candidates(jobs());
    std::vector<HistoryRun> others; // that can't go on
    for (const HistoryRun &run : CommandRest::runs()) {
        (CommandRest::isByFile(run) ? runs : others).push_back(run);
    }
    std::ranges::sort(runs, std::ranges::greater(), &HistoryRun::id);
    if (m_lists) {
        listRuns(runs, m_options.json ? HistoryForm::Json : HistoryForm::Text);
    }
    if (m_lists || (runs.empty() && m_run == 0)) {
        sayWhatCannotGoOn(others);
        if (runs.empty()) {
            Console::complain(tr("there is nothing to resume"));
        }
        return Success;
    }
    if (m_discards && std::ranges::find(others, m_run, &HistoryRun::id) != others.end()) {
        runs = others;
    }
    const HistoryRun run = choose(runs);
    if (m_discards) {
        Resumption::forget(run);
        return Success;
    }
    return CommandRest::isByFile(run) ? giveAgain(run) : resume(run);
}

QString ResumeVerb::howToGiveAgain(const HistoryRun &run)
{
    const QString number = QString::number(run.id);
    if (run.command == Undoing::command) {
        return tr("run %1 was an undo, and can't go on from where it stopped; kruv undo --list shows what "
                  "can "
                  "still be taken back")
            .arg(number);
    }
    return run.arguments.isEmpty()
               ? tr("run %1 can't go on from where it stopped; give its command again in the window, on the "
                    "tab %2")
                     .arg(number, run.command)
               : tr("run %1 can't go on from where it stopped; give its command again, in %2: %3")
                     .arg(number, run.folder, HistoryWords::command(run));
}

void ResumeVerb::sayWhatCannotGoOn(const std::vector<HistoryRun> &runs)
{
    for (const HistoryRun &run : runs) {
        Console::complain(howToGiveAgain(run));
    }
}

int ResumeVerb::giveAgain(const HistoryRun &run)
{
    const QStringList files = CommandRest::filesOf(run);
    CLI::App &root = *app().get_parent();
    const bool isQuiet = m_options.quiet; // the program's options are parsed anew
    const auto arguments = CommandRest::withPaths(root, run.arguments, files);
    if (!arguments) {
        throw UsageError(howToGiveAgain(run));
    }
    if (!isQuiet) {
        Console::complain(tr("run %1: %n of %2 job(s) are left, and go on as a new run", nullptr,
                             static_cast<int>(files.size()))
                              .arg(run.id)
                              .arg(run.all));
    }
    CommandRest::takeBackHalves(run);
    RunRecorder::announceContinued(run.id);
    CommandRest::become(*arguments, run.folder);
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
    const HistoryRun known = endedRun(m_run);
    if (known.done + known.failed + known.undone < known.all) {
        throw UsageError(howToGiveAgain(known));
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
