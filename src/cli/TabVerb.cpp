// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/TabVerb.h"

#include "base/SystemError.h"
#include "cli/Console.h"
#include "cli/ExitStatus.h"
#include "cli/FormatFlags.h"
#include "cli/JobSession.h"
#include "cli/MakeReporter.h"
#include "cli/PlanText.h"
#include "cli/UsageError.h"
#include "journal/History.h"
#include "journal/JournalFile.h"
#include "platform/OneWindow.h"
#include "tabs/BaseTab.h"
#include "tabs/Controls.h"
#include "tabs/ConversionTab.h"
#include "tabs/NamePattern.h"
#include "tabs/OtherFiles.h"
#include "tabs/Plan.h"
#include "tabs/PlanFile.h"
#include "tabs/Resumption.h"
#include "tasks/FileCommit.h"
#include "tasks/StagingLock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <stdexcept>
#include <sys/stat.h>

namespace kruv {

namespace {

/// Why the system finds nothing there, its error number; 0 where there is something.
int errorAt(const QString &path)
{
    struct stat found = {};
    return stat(QFile::encodeName(QDir().absoluteFilePath(path)).constData(), &found) == 0 ? 0 : errno;
}

QString textOf(int error)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return TabVerb::tr("no such file or folder");
    case EACCES:
        return TabVerb::tr("a folder on the way there can't be read; check that you may open it");
    case ENAMETOOLONG:
        return TabVerb::tr("longer than the system allows: %1 bytes a name, %2 bytes a path")
            .arg(QString::number(NAME_MAX), QString::number(PATH_MAX - 1));
    default:
        return systemErrorText(error);
    }
}

/// As it is typed: "tags set".
QString nameOf(const CLI::App &command)
{
    QString name = QString::fromStdString(command.get_name());
    for (const CLI::App *above = command.get_parent(); above && above->get_parent();
         above = above->get_parent()) {
        name.prepend(QString::fromStdString(above->get_name()) + u' ');
    }
    return name;
}

} // namespace

TabVerb::TabVerb(CLI::App &parent, const std::string &name, const QString &description)
    : Verb(parent, name, description)
{
}

TabVerb::~TabVerb() = default;

void TabVerb::declareCommonFlags(bool needsPaths)
{
    addOption("paths", m_options.paths, tr("Files, and folders with everything below them"))
        ->required(needsPaths)
        ->type_name("PATH");
    declareRunFlags(m_options);
}

void TabVerb::declareFolderFlag()
{
    addOption("-o,--output", m_options.output, tr("Folder that the output goes into"))->type_name("DIR");
}

void TabVerb::declarePlaceFlags()
{
    declareFolderFlag();
    addFlag("--beside-source", m_options.besideSource, tr("Write each output next to its source"))
        ->excludes(app().get_option("--output"));
}

void TabVerb::declareFormatFlag(const QList<const Format *> &formats, const QString &help)
{
    addOption("--to", m_format, help)
        ->required()
        ->type_name(FormatFlags::ids(formats).join(u'|').toStdString());
}

void TabVerb::choose(ChoiceControl &control, const char *flag, const std::string &id)
{
    if (!control.selectId(QString::fromStdString(id))) {
        throw UsageError(tr("%1 %2: it can be %3")
                             .arg(QLatin1StringView(flag), QString::fromStdString(id),
                                  FormatFlags::either(control.ids())));
    }
}

void TabVerb::declareDeletionFlags()
{
    addFlag("--delete-originals", m_options.deleteOriginals,
            tr("Delete each source once its output is written and its job succeeded"));
    addFlag("-y,--yes", m_options.yes, tr("Say yes to the question whether originals may be deleted"));
    addFlag("--accept-losses", m_options.acceptLosses,
            tr("Delete originals also where their outputs can't hold all of their tags and pictures"));
    declareProofFlag();
}

void TabVerb::declareProofFlag()
{
    addFlag(
        "--prove", m_options.prove,
        tr("Decode each output and compare it with its source before it gets its name; always done before "
           "originals are deleted"));
}

void TabVerb::declareChangeFlag()
{
    addFlag("--delete-changed", m_options.deleteChanged,
            tr("Delete also originals that can't be got back from their outputs: DSD, floating point"))
        ->needs(app().get_option("--delete-originals"));
}

void TabVerb::declareOutputFlags()
{
    declarePlaceFlags();
    declareDeletionFlags();
}

void TabVerb::declareExistingFlags()
{
    CLI::Option *overwrite = addFlag("--overwrite", m_options.overwrite,
                                     tr("Replace outputs that are there, once the new ones are whole"));
    CLI::Option *skip =
        addFlag("--skip-existing", m_options.skipExisting, tr("Leave outputs that are there as they are"));
    CLI::Option *both =
        addFlag("--keep-both", m_options.keepBoth, tr("Give new outputs a number where their name is taken"));
    CLI::Option *done = addFlag("--skip-done", m_options.skipDone,
                                tr("Leave alone what the same command made before, by its receipt or else by "
                                   "comparing the audio, and do the rest"));
    CLI::Option *update = addFlag(
        "--update", m_options.update,
        tr("Leave alone what is as new as its source; where only tags have changed, copy these anew"));
    overwrite->excludes(skip)->excludes(both);
    skip->excludes(both);
    for (CLI::Option *other : {overwrite, skip, both, done}) {
        update->excludes(other);
    }
    addFlag("--ignore-space", m_options.ignoreSpace,
            tr("Begin although the output's disk seems to be too small"));
    declareDryRunFlag();
    addFlag("--mirror", m_options.mirror,
            tr("Keep the tree below each folder given: A/B/x.wav becomes DIR/B/x.flac"))
        ->excludes(app().get_option("--beside-source"))
        ->needs(app().get_option("--output"));
    declareNameFlags();
    declareOthersFlag();
}

void TabVerb::declareNameFlags()
{
    addOption(
        "--name", m_options.name,
        tr("Name outputs after the tags of their sources, in folders where it has slashes: "
           "\"{albumartist}/{album} ({year})/{disc}-{track:02} {title}\". Fields are %1; digits behind a "
           "colon are those that a number has at least, and {{ is a brace. Empty are called \"Unknown "
           "Artist\" and \"Unknown Album\", a title as its file; other empty fields vanish, with the word "
           "before, the separators behind and the brackets around them, and so do folders of nothing else")
            .arg(u'{' + NamePattern::fields().join(QStringLiteral("}, {")) + u'}'))
        ->type_name("PATTERN");
    addFlag(
        "--portable-names", m_options.portableNames,
        tr("Make names that FAT, exFAT and Windows take: without <>:\"\\|?*, points and blanks at the end, "
           "or names of devices, and apart in more than capitals"));
}

void TabVerb::declareOthersFlag()
{
    app().add_flag(
        "--copy-others", m_options.copyOthers,
        tr("Copy files beside the audio as well: all, or =%1 of them. File names in cue sheets become "
           "the new ones; lists over audio are made anew over the new files, fingerprints of others "
           "than FLAC files and SFV as MD5")
            .arg(OtherFiles::ids().join(u','))
            .toStdString());
}

void TabVerb::placeOutputs(ConversionTab &tab) const
{
    tab.keepFoldersButton().setOn(m_options.mirror);
    tab.setPortableNames(m_options.portableNames);
    if (!m_options.copyOthers.empty()) {
        // Without kinds it has the value of a flag.
        const auto kinds = m_options.copyOthers == "true"
                               ? OtherFiles::all
                               : OtherFiles::kindsFrom(QString::fromStdString(m_options.copyOthers));
        if (!kinds) {
            throw UsageError(tr("--copy-others=%1: it can be all, or some of %2 with commas between them")
                                 .arg(QString::fromStdString(m_options.copyOthers),
                                      OtherFiles::ids().join(QStringLiteral(", "))));
        }
        if (m_options.besideSource && m_options.name.empty()) {
            throw UsageError(tr("--copy-others: the files lie beside the outputs already"));
        }
        tab.setOtherFiles(*kinds);
    }
    if (!m_options.name.empty()) {
        try {
            tab.setNames(std::make_shared<const NamePattern>(QString::fromStdString(m_options.name)));
        } catch (const std::runtime_error &problem) {
            throw UsageError(QStringLiteral("--name: ") + QString::fromUtf8(problem.what()));
        }
    }
}

void TabVerb::declareDetachFlag()
{
    addFlag("--detach", m_options.detach,
            tr("Hand the jobs to the window that is open, and don't wait for them"));
}

void TabVerb::declareSavePlanFlag()
{
    addOption(
        "--save-plan", m_options.savePlan,
        tr("Do nothing yet: write what is to be done into a file, for kruv run, here or on other machines"))
        ->excludes(app().get_option("--dry-run"))
        ->excludes(app().get_option("--detach"))
        ->type_name("FILE");
}

void TabVerb::declareDryRunFlag()
{
    addFlag("--dry-run", m_options.dryRun,
            tr("Tell what would be done, file by file, and do nothing; status 1 where something would be "
               "refused"));
}

void TabVerb::declareOutputFolder()
{
    declareFolderFlag();
    app().get_option("--output")->required();
    addFlag("--overwrite", m_options.overwrite, tr("Replace outputs that are there already"));
}

int TabVerb::run()
{
    const QStringList paths = existingPaths();
    if (paths.isEmpty() && !m_options.paths.empty()) {
        return Failure;
    }
    checkOutputFolder();
    checkPlanFile();
    JobSession session(m_options, makeReporter(m_options));
    m_person = &session.userInterface();
    KruvController &controller = session.controller();
    if (m_options.prove) {
        controller.taskQueue().setProvesOutputs();
    }
    controller.runRecorder().recordAs(nameOf(app()), QCoreApplication::arguments().mid(1));
    if (m_options.onlyPlans()) {
        controller.planOnly();
        session.queueRun().leaveOutSummary();
    }
    const bool detaches = m_options.detach && !m_options.onlyPlans() && mayDetach(session);
    if (detaches) {
        controller.leaveJobsToOthers();
    }
    runCommands(controller, session.queueRun(), paths);
    if (detaches) {
        detach(session);
    }
    const int status =
        m_options.onlyPlans() ? tellPlan(*controller.plan(), session.userInterface()) : session.finish();
    const bool complained = m_failed || session.userInterface().alerts() > 0;
    m_person = nullptr;
    return status == Success && complained ? static_cast<int>(Failure) : status;
}

int TabVerb::tellPlan(Plan &plan, const CliUserInterface &person) const
{
    const QSet<QString> refused(person.lossy().begin(), person.lossy().end());
    const auto replaces = [](const PlanEntry &entry) { return entry.action == PlanEntry::Action::Replace; };
    const bool mayReplace = m_options.overwrite || m_options.update;
    if (m_options.dryRun &&
        (person.stops() || (!mayReplace && std::ranges::any_of(plan.entries(), replaces)))) {
        plan.warn(tr("As it stands, the command would begin nothing: what is refused needs a flag first."));
    }
    plan.refuse([&refused](const PlanEntry &entry) { return refused.contains(entry.sources.value(0)); },
                tr("It is lossy: a lossless format makes it larger, but brings nothing back. "
                   "--from-lossy encodes such files all the same."));
    if (!mayReplace) {
        plan.refuse(replaces, tr("There is a file of that name already; --overwrite replaces it."));
    }
    if (m_options.json) {
        PlanText::writeJson(plan);
    } else {
        PlanText::write(plan, m_options.savePlan.empty() ? PlanText::Which::All : PlanText::Which::LeftOut);
    }
    if (!m_options.savePlan.empty()) {
        savePlan(plan);
    }
    return plan.totals().refused > 0 || plan.isShortOfSpace() ? Failure : Success;
}

void TabVerb::checkPlanFile() const
{
    const QString path = QString::fromStdString(m_options.savePlan);
    if (!path.isEmpty() && FileCommit::isTaken(path) && !m_options.overwrite) {
        throw UsageError(tr("--save-plan %1: it is there already. Add --overwrite to replace it.").arg(path));
    }
    if (!path.isEmpty() && FileCommit::isTaken(path) && !PlanFile::isPlan(path)) {
        throw UsageError(
            tr("--save-plan %1: what is there is no plan. Choose another name, or move it away.").arg(path));
    }
}

void TabVerb::savePlan(const Plan &plan) const
{
    const QString path = QString::fromStdString(m_options.savePlan);
    PlanFile::write(QDir().absoluteFilePath(path), plan);
    if (!m_options.quiet) {
        Console::complain(tr("the plan is in %1; to carry it out: kruv run %1").arg(path));
    }
}

bool TabVerb::mayDetach(JobSession &session) const
{
    const QString reason = !OneWindow().isOpenElsewhere() ? tr("No window is open")
                           : !session.controller().journal().isOn()
                               ? tr("Nothing is recorded, so that nothing can be handed over")
                               : QString();
    if (!reason.isEmpty()) {
        session.userInterface().remark(tr("%1; the jobs are done here.").arg(reason));
    }
    return reason.isEmpty();
}

void TabVerb::detach(JobSession &session) const
{
    KruvController &controller = session.controller();
    controller.journal().waitUntilWritten();
    const QString journal = JournalFile::usualPath();
    std::optional<HistoryRun> ours;
    History(journal).forEachRun([&ours](const HistoryRun &run) {
        if (!ours && run.process == QString::fromUtf8(StagingLock::thisProcess())) {
            ours = run;
        }
    });
    if (!ours) {
        return; // there was nothing to be done
    }
    if (OneWindow().handRun(ours->id, journal)) {
        session.queueRun().leaveOutSummary();
        session.userInterface().remark(
            tr("%n job(s) were handed to the open window.", nullptr, static_cast<int>(ours->all)));
        return;
    }
    session.userInterface().remark(tr("The open window did not take the jobs; they are done here."));
    session.queueRun().run(
        [&] { Resumption::goOn(*ours, controller.taskQueue(), controller.runRecorder()); });
}

QStringList TabVerb::existingPaths()
{
    QStringList found;
    for (const std::string &given : m_options.paths) {
        const QString path = QString::fromStdString(given);
        if (path.toStdString() != given) {
            Console::complain(tr("%1: the name is not valid UTF-8; rename it, for example with convmv")
                                  .arg(Console::printable(path)));
            m_failed = true;
        } else if (const int error = errorAt(path); error != 0) {
            Console::complain(QStringLiteral("%1: %2").arg(path, textOf(error)));
            m_failed = true;
        } else if (const QFileInfo info(path); !info.isFile() && !info.isDir()) {
            Console::complain(tr("%1: neither a regular file nor a folder; it was left alone")
                                  .arg(Console::printable(path)));
            m_failed = true;
        } else {
            found.append(QDir::cleanPath(QDir().absoluteFilePath(path)));
        }
    }
    return found;
}

void TabVerb::checkOutputFolder()
{
    if (m_options.output.empty()) {
        return;
    }
    const QString folder = QString::fromStdString(m_options.output);
    const QFileInfo info(folder);
    const int error = errorAt(folder);
    if (error != 0 && error != ENOENT) {
        throw UsageError(tr("--output %1: %2").arg(folder, textOf(error)));
    }
    if (error != 0) {
        throw UsageError(tr("--output: there is no folder %1; make it first: mkdir -p '%1'").arg(folder));
    }
    if (!info.isDir()) {
        throw UsageError(tr("--output: %1 is a file, not a folder").arg(folder));
    }
}

void TabVerb::takeIn(BaseTab &tab, const QStringList &paths)
{
    QStringList refused;
    int refusedCount = 0;
    QObject::connect(&tab, &BaseTab::filesRefused, &tab, [&](const QStringList &extensions, int count) {
        refused = extensions;
        refusedCount = count;
    });
    tab.setAlertsOfRefusedFiles(false);
    tab.addFiles(paths);
    tab.disconnect(&tab);
    if (refusedCount > 0 && !m_options.quiet) {
        refused.removeAll(QString());
        std::ranges::sort(refused);
        Console::complain(refused.isEmpty()
                              ? tr("%n file(s) of other kinds passed over", nullptr, refusedCount)
                              : tr("%n file(s) of other kinds passed over: %1", nullptr, refusedCount)
                                    .arg(u'.' + refused.join(QStringLiteral(", ."))));
    }
    if (tab.fileList().isEmpty()) {
        throw UsageError(tr("%1: nothing in the given paths is of a kind that it takes")
                             .arg(QString::fromStdString(app().get_name())));
    }
}

void TabVerb::runTab(BaseTab &tab, QueueRun &queueRun, const QStringList &paths)
{
    takeIn(tab, paths);
    queueRun.run([&tab] { tab.executeCommand(); });
    const bool wasTold = m_options.onlyPlans() || (m_person && m_person->alerts() > 0);
    if (!tab.fileList().isEmpty() && !queueRun.interrupted() && !wasTold) {
        throw UsageError(tr("Nothing was done."));
    }
}

} // namespace kruv
