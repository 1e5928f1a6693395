// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Resumption.h"

#include "base/PathNames.h"
#include "base/UserInterface.h"
#include "formats/Formats.h"
#include "journal/JournalFile.h"
#include "tabs/OtherFiles.h"
#include "tasks/FileCommit.h"
#include "tasks/KruvTask.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/RunRecorder.h"
#include "tasks/StagingFolder.h"
#include "tasks/StagingLock.h"

#include <QDateTime>
#include <QFileInfo>
#include <QLocale>
#include <QSet>

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

namespace kruv {

namespace {

/// Tells which file it is that can't be used.
void useJournal(const std::function<void(const QString &path)> &work)
{
    const QString path = JournalFile::usualPath();
    try {
        work(path);
    } catch (const std::runtime_error &error) {
        throw std::runtime_error(Resumption::tr("The journal %1 can't be used: %2.")
                                     .arg(path, QString::fromUtf8(error.what()))
                                     .toStdString());
    }
}

} // namespace

std::vector<HistoryRun> Resumption::candidates(History::Jobs jobs)
{
    std::vector<HistoryRun> found;
    useJournal([&](const QString &path) {
        History(path).forEachRunWith(jobs, [&found](const HistoryRun &run) {
            if (RunRecorder::isOver(run) && ConversionOrder::fromText(run.plan)) {
                found.push_back(run);
            }
        });
    });
    return found;
}

void Resumption::offer(KruvTaskQueue &queue, RunRecorder &recorder, UserInterface &person, const Show &show)
try {
    const auto runs = candidates(History::Jobs::Left); // none that a person cancelled
    const auto found = runs.begin();
    if (found == runs.end()) {
        return;
    }
    const QLocale locale;
    const QString when =
        locale.toString(QDateTime::fromMSecsSinceEpoch(found->started), QLocale::ShortFormat);
    enum Answer { Continue, ShowIt, Forget };
    const int answer = person.ask(UserInterface::Matter::Other,
                                  tr("A conversion stopped at %1 of %2.")
                                      .arg(locale.toString(found->done), locale.toString(found->all)),
                                  tr("%1, begun on %2 in %3.").arg(found->command, when, found->folder),
                                  {tr("Continue"), tr("Show"), tr("Forget"), tr("Later")}, Continue);
    if (answer == Continue) {
        goOn(*found, queue, recorder);
    } else if (answer == ShowIt) {
        show(*found);
    } else if (answer == Forget) {
        forget(*found);
    }
} catch (const std::runtime_error &) { // what is wrong with the journal is said when it is to be written
}

bool Resumption::goOn(const HistoryRun &run, KruvTaskQueue &queue, RunRecorder &recorder)
{
    Resumption rest(run, History::Jobs::NotDone);
    const bool isOurs = rest.take();
    if (isOurs) {
        rest.queueJobs(queue, recorder);
    }
    return isOurs;
}

bool Resumption::takeOver(std::int64_t run, const QString &journal, KruvTaskQueue &queue,
                          RunRecorder &recorder)
try {
    if (journal.isEmpty() || journal != JournalFile::usualPath()) {
        return false;
    }
    const auto found = History(journal).run(run);
    return found && ConversionOrder::fromText(found->plan) && goOn(*found, queue, recorder);
} catch (const std::runtime_error &) {
    return false;
}

void Resumption::forget(const HistoryRun &run)
{
    useJournal([&run](const QString &path) { JournalFile::forget(path, run); });
}

Resumption::Resumption(const HistoryRun &run, History::Jobs jobs)
    : m_run(run)
    , m_triesAgain(jobs == History::Jobs::NotDoneOrFailed)
    , m_kept(ConversionOrder::fromText(run.plan).value_or(ConversionOrder::Kept()))
    , m_plan({}, m_kept.lists)
{
}

bool Resumption::take()
{
    bool isOurs = false;
    useJournal([&](const QString &path) {
        isOurs = JournalFile::take(path, m_run, QString::fromUtf8(StagingLock::thisProcess()));
        if (isOurs) {
            m_resumed.run = m_run.id;
            History(path).forEachEntryOf(m_run.id, [this](const HistoryEntry &entry) { add(entry); });
        }
    });
    return isOurs;
}

void Resumption::add(const HistoryEntry &entry)
{
    if (entry.hasState(EntryEnd::State::Removed)) {
        return;
    }
    const bool wasDone = entry.hasState(EntryEnd::State::Done);
    if (entry.source.isEmpty()) { // a list of the outputs
        m_listsDone += wasDone && FileCommit::isTaken(entry.output) ? 1 : 0;
        m_resumed.dropped.push_back(entry.id);
        return;
    }
    using Earlier = ConversionRequest::Earlier;
    const Left left = leftOf(entry);
    const bool mayReplace = entry.hasAction(EntryRecord::Action::Replace);
    m_plan.entries().push_back({.source = entry.source,
                                .folder = PathNames::folderOf(entry.output),
                                .output = entry.output,
                                .mayReplace = mayReplace || left == Left::PerhapsAll,
                                .keepReason = entry.keepReason,
                                .earlier = left == Left::Proof                       ? Earlier::Kept
                                           : left == Left::PerhapsAll && !mayReplace ? Earlier::Replaced
                                                                                     : Earlier::None,
                                .isDone = left == Left::Nothing,
                                .isCopy = OtherFiles::kindOf(entry.output).has_value()});
    m_ids.push_back(entry.id);
    if (left == Left::Nothing && !wasDone && !entry.hasState(EntryEnd::State::Failed)) {
        m_resumed.done.push_back(entry.id);
    }
}

Resumption::Left Resumption::leftOf(const HistoryEntry &entry) const
{
    if (entry.hasState(EntryEnd::State::Failed)) {
        // What it made all the same lacks something that the file does not tell.
        const bool madeSomething = entry.hasReceipt && FileCommit::isTaken(entry.output);
        return m_triesAgain && !madeSomething ? Left::All : Left::Nothing;
    }
    if (entry.outputsAreAsTheyWere()) {
        return Left::Nothing;
    }
    if (!FileCommit::isTaken(entry.output)) {
        return Left::All;
    }
    if (!QFileInfo::exists(entry.source)) {
        // An original that the run was to delete went when its output was proven and on the disk.
        return m_kept.order.deletes && isOfThisRun(entry.output) ? Left::Nothing : Left::All;
    }
    return entry.hasReceipt ? Left::Proof : Left::PerhapsAll;
}

/// A whole file of the kind that is made, and no older than the run.
bool Resumption::isOfThisRun(const QString &output) const
try {
    const auto stamp = FileStamp::of(output);
    if (!stamp || !stamp->isNoOlderThan(m_run.started)) {
        return false;
    }
    Formats::requireContent(output, m_kept.order.target);
    return true;
} catch (const std::runtime_error &) {
    return false;
}

qsizetype Resumption::jobsDone() const
{
    return std::ranges::count(m_plan.entries(), true, &OutputPlan::Entry::isDone);
}

void Resumption::queueJobs(KruvTaskQueue &queue, RunRecorder &recorder)
{
    sweepFolders();
    const ConversionOrder::Jobs made = m_kept.order.makeJobs(m_plan, &queue);
    for (std::size_t index = 0; index < m_ids.size(); ++index) {
        const OutputPlan::Entry &entry = m_plan.entries()[index];
        if (!entry.isDone && !made.withoutJob.contains(entry.source)) {
            m_resumed.waiting.push_back(m_ids[index]);
        }
    }
    const bool hasLists = m_listsDone > 0 && m_listsDone >= m_kept.order.listJobs(m_plan, nullptr).size();
    if (!made.listsFollow && hasLists) {
        m_resumed.dropped.clear();
    }
    recorder.resume(m_resumed);
    queue.addTasks(made.jobs);
    if (!made.listsFollow && !hasLists) {
        if (const auto lists = m_kept.order.makeLists(m_plan, &queue)) {
            queue.addTask(lists);
        }
    }
}

void Resumption::sweepFolders() const
{
    QSet<QString> folders;
    for (const OutputPlan::Entry &entry : m_plan.entries()) {
        folders.insert(entry.folder);
    }
    for (const QString &folder : std::as_const(folders)) {
        StagingFolder::sweep(folder);
    }
}

} // namespace kruv
