// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/UndoVerb.h"

#include "base/Preferences.h"
#include "cli/CliUserInterface.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/HistoryJson.h"
#include "cli/HistoryText.h"
#include "cli/MakeReporter.h"
#include "cli/QueueRun.h"
#include "cli/UsageError.h"
#include "platform/SleepInhibitor.h"
#include "tabs/KruvController.h"
#include "tabs/Undoing.h"

#include <algorithm>

namespace kruv {

namespace {

constexpr QLatin1StringView ownName("undo");

} // namespace

UndoVerb::UndoVerb(CLI::App &parent)
    : Verb(parent, ownName.data(), tr("Take back renames, changes of tags, and originals from the trash"))
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
        return list(runs);
    }
    const auto chosen = std::ranges::find_if(runs, [this](const HistoryRun &run) {
        return m_run == 0 ? run.command != ownName : run.id == m_run;
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

int UndoVerb::list(const std::vector<HistoryRun> &runs) const
{
    const std::unique_ptr<HistoryReport> report =
        m_options.json ? std::unique_ptr<HistoryReport>(std::make_unique<HistoryJson>())
                       : std::make_unique<HistoryText>();
    for (const HistoryRun &run : runs) {
        report->run(run);
    }
    return Success;
}

int UndoVerb::undo(const HistoryRun &run) const
{
    Preferences preferences(Preferences::userFile(), Preferences::ControlState::Defaults);
    CliUserInterface userInterface(m_options);
    SleepInhibitor power;
    KruvController controller(preferences, userInterface, &power);
    if (m_options.jobs > 0) {
        controller.taskQueue().setMaxThreads(m_options.jobs);
    }
    controller.runRecorder().recordAs(ownName, QCoreApplication::arguments().mid(1));
    QueueRun queueRun(controller.taskQueue(), userInterface, makeReporter(m_options));
    Undoing undoing(run);
    if (undoing.othersDone() > 0) {
        userInterface.remark(tr("Of run %1, %n job(s) made files or wrote more than is kept; that stays.",
                                nullptr, static_cast<int>(undoing.othersDone()))
                                 .arg(run.id));
    }
    queueRun.leaveOutResults();
    queueRun.run([&] { undoing.queueJobs(controller.taskQueue(), controller.journal()); });
    controller.journal().finish(); // what it has to say comes before the summary
    return queueRun.finish();
}

} // namespace kruv
