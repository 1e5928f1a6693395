// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/RunVerb.h"

#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/JobSession.h"
#include "cli/MakeReporter.h"
#include "cli/PlanStatusText.h"
#include "cli/UsageError.h"
#include "tabs/PlanJobs.h"
#include "tabs/PlanResultsFile.h"
#include "tabs/PlanStates.h"

#include <QDir>

#include <stdexcept>

namespace kruv {

namespace {

bool anyEntry(std::size_t)
{
    return true;
}

void tellOfLoss(JobSession &session, PlanResultsFile &results)
{
    QObject::connect(
        &results, &PlanResultsFile::failed, &session.queueRun(),
        [&session](const QString &sentence) { session.userInterface().alert(sentence, {}, {}); });
}

} // namespace

RunVerb::RunVerb(CLI::App &parent)
    : Verb(parent, "run", tr("Do what a command wrote down with --save-plan, or a part of it"))
{
    addOption("plan", m_plan, tr("The plan"))->required()->type_name("FILE");
    CLI::Option *shard = addOption("--shard", m_shard,
                                   tr("Do only part I of N, which together do all and cost about the same"))
                             ->type_name("I/N");
    CLI::Option *status =
        addFlag("--status", m_tellsStatus,
                tr("Tell how far all runs of the plan have come; status 0 once all is done"));
    CLI::Option *missing =
        addFlag("--missing", m_runsMissing,
                tr("Do what no run has done yet, of all parts or of the one that is named"));
    CLI::Option *finish =
        addFlag("--finish", m_finishes,
                tr("Write what comes last, lists and copies of other files, once no audio is missing"));
    addOption("--root", m_roots, tr("What the plan says is below OLD is below NEW here; may be given again"))
        ->type_name("OLD=NEW")
        ->allow_extra_args(false);
    addOption("--results", m_results,
              tr("Folder that all runs leave their results in (default: FILE.results beside the plan)"))
        ->type_name("DIR");
    status->excludes(missing)->excludes(finish);
    finish->excludes(shard);
    declareRunFlags(m_options);
    setFooter(
        tr("What is done already is not done again. Without --shard, --missing and --finish the whole plan\n"
           "is done, lists last. Example: a plan in eight parts, on any machines\n"
           "  kruv encode --to flac --output ~/Flac --save-plan concert.plan ~/Concert\n"
           "  kruv run concert.plan --shard 1/8\n"
           "  kruv run concert.plan --missing --finish"));
}

std::optional<PlanShard> RunVerb::shard() const
{
    if (m_shard.empty()) {
        return std::nullopt;
    }
    const QString given = QString::fromStdString(m_shard);
    const auto shard = PlanShard::fromText(given);
    if (!shard) {
        throw UsageError(
            tr("--shard %1: give which part of how many, such as 1/8 to 8/8 for eight parts").arg(given));
    }
    return shard;
}

PlanRoots RunVerb::roots() const
try {
    QStringList texts;
    for (const std::string &text : m_roots) {
        texts.append(QString::fromStdString(text));
    }
    return PlanRoots(texts);
} catch (const std::runtime_error &problem) {
    throw UsageError(QStringLiteral("--root ") + QString::fromUtf8(problem.what()));
}

QString RunVerb::resultsFolder() const
{
    return QDir().absoluteFilePath(m_results.empty()
                                       ? QString::fromStdString(m_plan) + QStringLiteral(".results")
                                       : QString::fromStdString(m_results));
}

PlanFile::Wanted RunVerb::wanted(const PlanFile &plan, const std::optional<PlanShard> &shard)
{
    if (!shard) {
        return [&plan](std::size_t entry) { return !plan.isCopy(entry); };
    }
    return [&plan, number = shard->number, shards = PlanShard::deal(plan.costs(), shard->count)](
               std::size_t entry) { return shards[entry] == number && !plan.isCopy(entry); };
}

int RunVerb::run()
{
    static_cast<void>(shard()); // what is wrong with it is said before a large plan is read
    const PlanRoots moved = roots();
    const auto plan = [this] {
        try {
            return PlanFile(QString::fromStdString(m_plan));
        } catch (const std::runtime_error &problem) {
            throw UsageError(QString::fromUtf8(problem.what()));
        }
    }();
    return m_tellsStatus ? tellStatus(plan, moved) : runJobs(plan, moved);
}

int RunVerb::tellStatus(const PlanFile &plan, const PlanRoots &roots) const
{
    const PlanFile::Wanted entries = m_shard.empty() ? anyEntry : wanted(plan, shard());
    const PlanStates states(plan, roots, resultsFolder(), entries);
    const PlanStatusText text(plan, roots, states, entries);
    if (m_options.json) {
        text.writeJson();
    } else {
        text.write();
    }
    return text.isDone() ? Success : Failure;
}

int RunVerb::runJobs(const PlanFile &plan, const PlanRoots &roots) const
{
    JobSession session(m_options, makeReporter(m_options));
    session.controller().runRecorder().recordAs(QStringLiteral("run"), QCoreApplication::arguments().mid(1));
    session.queueRun().leaveOutResults();
    session.queueRun().setGoesOnBy(QStringLiteral("kruv run --missing ") + QString::fromStdString(m_plan));
    const bool runsAll = m_shard.empty() && !m_runsMissing && !m_finishes;
    if (!m_finishes || m_runsMissing) {
        runEntries(session, plan, roots);
    }
    const bool mayFinish = !session.queueRun().interrupted() &&
                           (m_finishes || (runsAll && session.queueRun().totals().failed == 0));
    const bool isWhole = !mayFinish || finish(session, plan, roots);
    const int status = session.finish();
    const bool complained = !isWhole || session.userInterface().alerts() > 0;
    return status == Success && complained ? static_cast<int>(Failure) : status;
}

void RunVerb::runEntries(JobSession &session, const PlanFile &plan, const PlanRoots &roots) const
{
    const PlanFile::Wanted entries = wanted(plan, shard());
    const PlanStates states(plan, roots, resultsFolder(), entries);
    std::size_t all = 0;
    std::size_t left = 0;
    for (std::size_t entry = 0; entry < plan.size(); ++entry) {
        all += entries(entry) ? 1 : 0;
        left += entries(entry) && !states.isOver(entry) ? 1 : 0;
    }
    if (left < all && !m_options.quiet) {
        session.userInterface().remark(
            tr("%1 of %n job(s) need not be done again.", nullptr, static_cast<int>(all)).arg(all - left));
    }
    if (left == 0) {
        return;
    }
    PlanResultsFile results(
        {.folder = resultsFolder(), .plan = plan.id(), .shard = QString::fromStdString(m_shard)},
        session.controller().taskQueue());
    tellOfLoss(session, results);
    session.queueRun().run([&] {
        PlanJobs(plan, roots, session.controller())
            .submit([&](std::size_t entry) { return entries(entry) && !states.isOver(entry); }, results);
    });
}

bool RunVerb::finish(JobSession &session, const PlanFile &plan, const PlanRoots &roots) const
{
    const PlanFile::Wanted all = anyEntry;
    const PlanStates states(plan, roots, resultsFolder(), all);
    const PlanStatusText text(plan, roots, states, all);
    if (!text.isOver()) {
        text.complainOfMissing();
        return false;
    }
    if (!text.lacksRest()) {
        return true;
    }
    PlanResultsFile results({.folder = resultsFolder(), .plan = plan.id(), .shard = {}},
                            session.controller().taskQueue());
    tellOfLoss(session, results);
    const int failed = session.queueRun().totals().failed;
    session.queueRun().run([&] { PlanJobs(plan, roots, session.controller()).submitRest(states, results); });
    if (session.queueRun().totals().failed == failed && !session.queueRun().interrupted()) {
        results.addLists();
    }
    return true;
}

} // namespace kruv
