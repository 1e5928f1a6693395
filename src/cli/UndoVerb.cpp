// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/UndoVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/JobSession.h"
#include "cli/MakeHistoryReport.h"
#include "cli/MakeReporter.h"
#include "cli/UsageError.h"
#include "tabs/Undoing.h"

#include <algorithm>

namespace kruv {

UndoVerb::UndoVerb(CLI::App &parent)
    : Verb(parent, Undoing::command.data(),
           tr("Take back renames, changes of tags, and originals from the trash"))
{
    addOption("run", m_run, tr("Its number, as kruv history shows it (default: the latest that is no undo)"))
        ->type_name("RUN");
    addFlag("--list", m_lists, tr("List the runs of which something can be taken back"));
    declareRunFlags(m_options);
    setFooter(tr(
        "Files that were changed since are left alone, and nothing is replaced. An undo is a run, too, and\n"
        "can be undone by its number. Example: after tags went into the wrong files\n"
        "  kruv undo"));
}

int UndoVerb::run()
{
    const auto runs = Undoing::candidates();
    if (m_lists) {
        listRuns(runs, m_options.json ? HistoryForm::Json : HistoryForm::Text);
        return Success;
    }
    const auto chosen = std::ranges::find_if(runs, [this](const HistoryRun &run) {
        return m_run == 0 ? run.command != Undoing::command : run.id == m_run;
    });
    if (chosen != runs.end()) {
        return undo(*chosen);
    }
    if (m_run != 0) {
        throw UsageError(
            tr("run %1: nothing of it can be taken back; kruv undo --list shows of which it can").arg(m_run));
    }
    Console::complain(tr("there is nothing to undo"));
    return Success;
}

int UndoVerb::undo(const HistoryRun &run) const
{
    JobSession session(m_options, makeReporter(m_options));
    KruvController &controller = session.controller();
    controller.runRecorder().recordAs(Undoing::command, QCoreApplication::arguments().mid(1));
    Undoing undoing(run);
    for (const QString &sentence : undoing.whatStays()) {
        session.userInterface().remark(sentence);
    }
    session.queueRun().leaveOutResults();
    session.queueRun().run([&] { undoing.queueJobs(controller.taskQueue(), controller.journal()); });
    return session.finish();
}

} // namespace kruv
