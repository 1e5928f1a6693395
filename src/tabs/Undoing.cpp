// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Undoing.h"

#include "journal/Journal.h"
#include "journal/JournalFile.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/RunRecorder.h"
#include "tasks/StagingLock.h"
#include "util/UndoMeans.h"
#include "util/UndoTask.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <stdexcept>

namespace kruv {

namespace {

/// The sentences on the first ones, and one that counts the others.
QStringList told(const QStringList &files, const std::function<QString(const QString &)> &sentence,
                 const std::function<QString(int)> &others)
{
    constexpr qsizetype mostNamed = 10;
    QStringList sentences;
    for (const QString &file : files.mid(0, mostNamed)) {
        sentences.append(sentence(file));
    }
    if (files.size() > mostNamed) {
        sentences.append(others(static_cast<int>(files.size() - mostNamed)));
    }
    return sentences;
}

/// Whether an undo took back what it could of the run, and the rest would be refused again.
bool isHopelessRest(const HistoryRun &run)
{
    using Prospect = UndoTask::Prospect;
    UndoMeans means(JournalFile::usualPath());
    bool wasBegun = run.undone > 0;
    bool canGoOn = false;
    History(JournalFile::usualPath()).forEachEntryOf(run.id, [&](const HistoryEntry &entry) {
        if (!canGoOn && UndoTask::kindFor(entry) != UndoTask::Kind::None) {
            const Prospect prospect = UndoTask::prospectOf(entry, means);
            canGoOn = prospect == Prospect::Possible;
            wasBegun = wasBegun || prospect == Prospect::RestRefused;
        }
    });
    return wasBegun && !canGoOn;
}

} // namespace

std::vector<HistoryRun> Undoing::candidates()
{
    std::vector<HistoryRun> found;
    History(JournalFile::usualPath())
        .forEachRunWith(History::Jobs::Undoable, [&found](const HistoryRun &run) {
            if (RunRecorder::isOver(run)) {
                found.push_back(run);
            }
        });
    return found;
}

std::optional<HistoryRun> Undoing::latest()
{
    auto runs = candidates();
    std::erase_if(runs, [](const HistoryRun &run) { return run.command == command; });
    if (runs.empty()) {
        return std::nullopt;
    }
    const auto found = std::ranges::find_if_not(runs, isHopelessRest);
    return found == runs.end() ? runs.front() : *found;
}

Undoing::Undoing(const HistoryRun &run)
    : m_run(run)
{
    readEntries();
}

bool Undoing::take()
{
    const bool isFree = m_run.undoing.isEmpty() || StagingLock::hasEnded(m_run.undoing.toUtf8());
    if (!isFree || !isTaken()) {
        return false;
    }
    readEntries();
    return !m_entries.empty();
}

bool Undoing::isTaken() const
try {
    return JournalFile::takeToUndo(JournalFile::usualPath(), m_run,
                                   QString::fromUtf8(StagingLock::thisProcess()));
} catch (const std::runtime_error &) { // the journal is in nobody's way
    return true;
}

void Undoing::readEntries()
{
    m_entries.clear();
    m_keptNothing.clear();
    m_outputs.clear();
    m_deleted.clear();
    History(JournalFile::usualPath()).forEachEntryOf(m_run.id, [this](const HistoryEntry &entry) {
        if (entry.hasReceipt && !entry.isUndone()) {
            add(entry);
        }
    });
    std::ranges::reverse(m_entries);
}

void Undoing::add(const HistoryEntry &entry)
{
    const UndoTask::Kind kind = UndoTask::kindFor(entry);
    const bool isMaker =
        entry.hasAction(EntryRecord::Action::Make) || entry.hasAction(EntryRecord::Action::Replace);
    if (kind != UndoTask::Kind::None) {
        m_entries.push_back(entry);
    } else if (!isMaker) {
        m_keptNothing.append(entry.source);
    }
    for (const HistoryFile &file : entry.files) {
        if (file.hasFate(Receipt::Fate::Deleted)) {
            m_deleted.append(file.path);
        } else if (isMaker && file.isOutput && FileStamp::of(file.path)) {
            m_outputs.append(file.path);
        }
    }
}

QString Undoing::title() const
{
    const auto count = [this](UndoTask::Kind kind) {
        return static_cast<int>(std::ranges::count(m_entries, kind, &UndoTask::kindFor));
    };
    if (const int renamed = count(UndoTask::Kind::Rename); renamed > 0) {
        return renamed == 1 ? tr("Renaming of 1 File") : tr("Renaming of %n Files", nullptr, renamed);
    }
    int files = 0;
    for (const HistoryEntry &entry : m_entries) {
        files += static_cast<int>(std::ranges::count(entry.files, true, &HistoryFile::isOutput));
    }
    if (count(UndoTask::Kind::Edit) > 0) {
        return files == 1 ? tr("Tagging of 1 File") : tr("Tagging of %n Files", nullptr, files);
    }
    if (const int trashing = count(UndoTask::Kind::FromTrash); trashing > 0) {
        return trashing == 1 ? tr("Trashing of the Original of 1 Job")
                             : tr("Trashing of the Originals of %n Jobs", nullptr, trashing);
    }
    return files == 1 ? tr("Return of 1 Original") : tr("Return of %n Originals", nullptr, files);
}

QStringList Undoing::whatStays() const
{
    return told(
               m_outputs, [](const QString &file) { return tr("%1 was made, and stays.").arg(file); },
               [](int count) { return tr("%n more file(s) that were made stay, too.", nullptr, count); }) +
           told(
               m_deleted,
               [](const QString &file) { return tr("%1 was deleted, and can't be brought back.").arg(file); },
               [](int count) {
                   return tr("%n more deleted file(s) can't be brought back.", nullptr, count);
               }) +
           told(
               m_keptNothing,
               [](const QString &file) {
                   return tr("%1 stays as it is; what it held before was not kept.").arg(file);
               },
               [](int count) { return tr("%n more file(s) stay as they are.", nullptr, count); });
}

void Undoing::queueJobs(KruvTaskQueue &queue, Journal &journal)
{
    connect(&queue, &KruvTaskQueue::taskEnded, this,
            [this, &journal](const KruvTask &task) { ended(task, journal); });
    const auto means = std::make_shared<UndoMeans>(JournalFile::usualPath());
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const HistoryEntry &entry : m_entries) {
        jobs.push_back(std::make_shared<UndoTask>(&queue, entry, means));
    }
    m_left = this->jobs();
    queue.addTasks(jobs);
}

void Undoing::ended(const KruvTask &task, Journal &journal)
{
    const auto *undo = dynamic_cast<const UndoTask *>(&task);
    if (!undo) {
        return;
    }
    if (undo->state().whatWasDone() == TaskState::Outcome::Complete) {
        journal.setUndone(undo->entry());
        ++m_done;
    } else if (undo->error()) {
        m_problems.append(undo->results()->results(task).trimmed());
    }
    if (--m_left == 0) {
        journal.endUndoing(m_run.id);
        Q_EMIT finished(m_done, m_problems);
    }
}

} // namespace kruv
