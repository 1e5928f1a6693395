// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/UndoVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/HistoryText.h"
#include "cli/JobSession.h"
#include "cli/MakeHistoryReport.h"
#include "cli/MakeReporter.h"
#include "cli/ReadJournal.h"
#include "cli/UsageError.h"
#include "journal/JournalFile.h"
#include "tabs/Undoing.h"

#include <algorithm>

namespace kruv {

UndoVerb::UndoVerb(CLI::App &parent)
    : Verb(parent, Undoing::command.data(),
           tr("Take back renames, changes of tags, and originals from the trash"))
{
    addRunNumber(m_run, tr("Its number, as kruv history shows it (default: the latest that is no undo)"));
    addFlag("--list", m_lists, tr("List the runs of which something can be taken back"));
    declareRunFlags(m_options);
    setFooter(tr(
        "Files that were changed since are left alone, and nothing is replaced. An undo is a run, too, and\n"
        "can be undone by its number. Example: after tags went into the wrong files\n"
        "  kruv undo"));
}

int UndoVerb::run()
{
    std::optional<HistoryRun> chosen;
    readJournal([&](const QString &) {
        if (m_lists) {
            listRuns(Undoing::candidates(), m_options.json ? HistoryForm::Json : HistoryForm::Text);
        } else if (chosen = m_run == 0 ? Undoing::latest() : named(); chosen) {
            tell(*chosen);
        } else {
            Console::complain(tr("there is nothing to undo"));
        }
    });
    return chosen ? undo(*chosen) : Success;
}

HistoryRun UndoVerb::named() const
{
    const auto runs = Undoing::candidates();
    const auto found = std::ranges::find(runs, m_run, &HistoryRun::id);
    if (found != runs.end()) {
        return *found;
    }
    endedRun(m_run); // a number of none is said first
    throw UsageError(
        tr("run %1: nothing of it can be taken back; kruv undo --list shows of which it can").arg(m_run));
}

/// Which one it is, before anything happens: that is for the person to know who named none.
void UndoVerb::tell(const HistoryRun &run) const
{
    if (m_options.json) {
        return listRuns({run}, HistoryForm::Json);
    }
    if (m_options.quiet) {
        return;
    }
    std::int64_t newest = run.id;
    History(JournalFile::usualPath()).forEachRun([&newest](const HistoryRun &each) {
        newest = std::max(newest, each.id);
    });
    const QString note =
        m_run == 0 && run.id < newest ? tr(" (the latest run that can be taken back)") : QString();
    Console::writeOut(HistoryText::nameOf(run) + note + u'\n');
}

int UndoVerb::undo(const HistoryRun &run) const
{
    JobSession session(m_options, makeReporter(m_options));
    KruvController &controller = session.controller();
    controller.runRecorder().recordAs(Undoing::command, QCoreApplication::arguments().mid(1));
    Undoing undoing(run);
    if (undoing.jobs() > 0 && !undoing.take()) {
        throw UsageError(tr("run %1 is being undone by another process, or was undone just now").arg(run.id));
    }
    for (const QString &sentence : undoing.whatStays()) {
        session.userInterface().remark(sentence);
    }
    session.queueRun().leaveOutResults();
    session.queueRun().run([&] { undoing.queueJobs(controller.taskQueue(), controller.journal()); });
    return session.finish();
}

} // namespace kruv
