// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/UndoTask.h"

#include "journal/History.h"
#include "journal/JournalFile.h"
#include "platform/Trash.h"
#include "tags/EditLog.h"
#include "tags/StagedFileStream.h"
#include "tasks/FileCommit.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>

namespace kruv {

namespace {

[[noreturn]] void refuse(const QString &sentence)
{
    throw std::runtime_error(sentence.toStdString());
}

bool isTrashed(const HistoryFile &file)
{
    return !file.isOutput && file.hasFate(Receipt::Fate::Trashed);
}

/// What receipts know a file again by.
void setTimes(const QString &path, const FileStamp &stamp)
{
    const timespec time{stamp.seconds, static_cast<long>(stamp.nanoseconds)};
    const timespec times[] = {time, time};
    utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

/// Where it was an edit or a rename, a job has one source.
const HistoryFile &sourceOf(const HistoryEntry &entry)
{
    return *std::ranges::find(entry.files, false, &HistoryFile::isOutput);
}

} // namespace

UndoTask::UndoTask(TaskCompletionSink *queue, const HistoryEntry &entry)
    : StagedTask(queue, entry.output.isEmpty() ? entry.source : entry.output)
    , m_entry(entry)
{
}

bool UndoTask::isPossible(const HistoryEntry &entry)
{
    return entry.hasReceipt && !entry.isUndone() &&
           (entry.hasWayBack || entry.hasAction(EntryRecord::Action::Rename) ||
            std::ranges::any_of(entry.files, isTrashed));
}

bool UndoTask::isRename() const
{
    return m_entry.hasAction(EntryRecord::Action::Rename);
}

QString UndoTask::outputPath() const
{
    return m_entry.source;
}

EntryRecord UndoTask::plannedEntry() const
{
    return {.source = inputPath(),
            .output = m_entry.hasWayBack ? QString() : outputPath(),
            .action = isRename() ? EntryRecord::Action::Rename : EntryRecord::Action::Work};
}

void UndoTask::doStartTask()
{
    if (!startFinishing()) {
        return;
    }
    if (isRename()) {
        renameBack();
    } else if (m_entry.hasWayBack) {
        editBack();
    } else {
        restoreOriginals();
    }
}

void UndoTask::renameBack()
{
    const auto stamp = FileStamp::of(m_entry.output);
    if (!stamp) {
        refuse(tr("%1 is not there any more.").arg(m_entry.output));
    }
    if (const auto problem = FileCommit::commit(m_entry.output, m_entry.source, FileCommit::Existing::Keep)) {
        refuse(tr("%1 could not be given its old name %2: %3.")
                   .arg(m_entry.output, m_entry.source, problem->text));
    }
    m_receipt = Receipt{.sources = {{m_entry.output, *stamp}}, .outputs = {{m_entry.source, *stamp}}};
}

void UndoTask::editBack()
{
    const HistoryFile &before = sourceOf(m_entry);
    if (!m_entry.outputsAreAsTheyWere()) {
        refuse(tr("%1 was changed, moved or removed since, and is left as it is.").arg(before.path));
    }
    const auto edits = FileEdit::unpack(History(JournalFile::usualPath()).wayBackOf(m_entry.id));
    const FileStamp now = FileStamp::of(before.path).value_or(FileStamp());
    const EditLog log;
    for (const FileEdit &edit : edits.value_or(std::vector<FileEdit>())) {
        StagedFileStream stream(before.path);
        if (!stream.isOpen() || !stream.apply(edit) || !stream.commit()) {
            refuse(tr("%1 could not be written. Its disk may be full, or it may not be written to.")
                       .arg(before.path));
        }
    }
    setTimes(before.path, before.stamp);
    m_receipt = Receipt{.sources = {{before.path, now}},
                        .outputs = {{before.path, FileStamp::of(before.path).value_or(before.stamp)}},
                        .wayBack = log.packed()};
}

void UndoTask::restoreOriginals()
{
    for (const HistoryFile &file : m_entry.files) {
        if (!isTrashed(file)) {
            continue;
        }
        const QStringList trashed = trashedFrom(file.path);
        const auto found = std::ranges::find_if(trashed, [&file](const QString &each) {
            return HistoryFile{.path = each, .stamp = file.stamp}.isAsItWas();
        });
        if (found == trashed.end()) {
            refuse(tr("%1 is not in the trash any more.").arg(file.path));
        }
        if (const QString problem = restoreFromTrash(*found, file.path); !problem.isEmpty()) {
            refuse(tr("%1: %2.").arg(file.path, problem));
        }
    }
}

} // namespace kruv
