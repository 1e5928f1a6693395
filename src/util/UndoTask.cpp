// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/UndoTask.h"

#include "platform/Trash.h"
#include "tags/EditLog.h"
#include "tags/StagedFileStream.h"
#include "tasks/FileCommit.h"
#include "util/UndoMeans.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <utility>

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

/// Where the trash has it; empty where it has not, any more.
QString inTrash(const HistoryFile &original, UndoMeans &means)
{
    const QStringList trashed = means.trashedFrom(original.path);
    const auto found = std::ranges::find_if(trashed, [&original](const QString &each) {
        return HistoryFile{.path = each, .stamp = original.stamp}.isAsItWas();
    });
    return found == trashed.end() ? QString() : *found;
}

/// What receipts know a file again by.
void setTimes(const QString &path, const FileStamp &stamp)
{
    const timespec time{stamp.seconds, static_cast<long>(stamp.nanoseconds)};
    const timespec times[] = {time, time};
    utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

} // namespace

UndoTask::UndoTask(TaskCompletionSink *queue, const HistoryEntry &entry, std::shared_ptr<UndoMeans> means)
    : StagedTask(queue, kindFor(entry) == Kind::Rename ? entry.output : entry.source)
    , m_entry(entry)
    , m_kind(kindFor(entry))
    , m_means(std::move(means))
{
    results()->setHasResults(false); // whoever undoes a run tells of all of its jobs at once
}

UndoTask::Kind UndoTask::kindFor(const HistoryEntry &entry)
{
    if (!entry.hasReceipt || entry.isUndone()) {
        return Kind::None;
    }
    if (entry.hasAction(EntryRecord::Action::Rename)) {
        return Kind::Rename;
    }
    if (entry.hasAction(EntryRecord::Action::Restore)) {
        return Kind::IntoTrash;
    }
    return entry.hasWayBack                              ? Kind::Edit
           : std::ranges::any_of(entry.files, isTrashed) ? Kind::FromTrash
                                                         : Kind::None;
}

UndoTask::Prospect UndoTask::prospectOf(const HistoryEntry &entry, UndoMeans &means)
{
    int possible = 0;
    int back = 0; // by an earlier undo
    int refused = 0;
    const auto count = [&](bool canGoBack, bool isBack) {
        ++(canGoBack ? possible : isBack ? back : refused);
    };
    const Kind kind = kindFor(entry);
    if (kind == Kind::Rename) {
        const bool isThere = FileCommit::isTaken(entry.output);
        count(isThere && !FileCommit::isTaken(entry.source), !isThere && entry.sourceIsAsItWas(entry.source));
    }
    const auto changed = kind == Kind::Edit ? changedBy(entry) : std::vector<Changed>();
    for (std::size_t index = 0; index < changed.size(); ++index) {
        const auto &[before, after] = changed[index];
        const bool isAfter = after.isAsItWas() || (!before.isAsItWas() && bytesBefore(entry, index, means));
        count(isAfter, before.isAsItWas());
    }
    for (const HistoryFile &file : entry.files) {
        if (kind == Kind::FromTrash && isTrashed(file)) {
            count(!FileCommit::isTaken(file.path) && !inTrash(file, means).isEmpty(), file.isAsItWas());
        } else if (kind == Kind::IntoTrash && file.isOutput) {
            count(file.isAsItWas(), false);
        }
    }
    return possible > 0 || refused == 0 ? Prospect::Possible
           : back > 0                   ? Prospect::RestRefused
                                        : Prospect::Refused;
}

std::vector<UndoTask::Changed> UndoTask::changedBy(const HistoryEntry &entry)
{
    std::vector<Changed> changed;
    for (const HistoryFile &after : entry.files) {
        const auto before = std::ranges::find_if(entry.files, [&after](const HistoryFile &file) {
            return after.isOutput && !file.isOutput && file.path == after.path;
        });
        if (before != entry.files.end()) {
            changed.push_back({*before, after});
        }
    }
    return changed;
}

/// The file of which the job changed the bytes, with these put back; null where it is not as the job left it.
std::unique_ptr<StagedFileStream> UndoTask::bytesBefore(const HistoryEntry &entry, std::size_t index,
                                                        UndoMeans &means)
{
    const auto changed = changedBy(entry);
    const auto packed = FileEdit::unbundle(means.wayBackOf(entry.id), static_cast<qsizetype>(changed.size()));
    const auto edits = FileEdit::unpack(packed.value(static_cast<qsizetype>(index)));
    return edits ? StagedFileStream::asBefore(changed[index].before.path, *edits) : nullptr;
}

void UndoTask::takeBackHalves(const HistoryEntry &entry, UndoMeans &means)
{
    const auto changed = kindFor(entry) == Kind::Edit ? changedBy(entry) : std::vector<Changed>();
    for (std::size_t index = 0; index < changed.size(); ++index) {
        const HistoryFile &before = changed[index].before;
        const auto stream = before.isAsItWas() ? nullptr : bytesBefore(entry, index, means);
        if (stream && stream->commit()) {
            setTimes(before.path, before.stamp);
        }
    }
}

QString UndoTask::outputPath() const
{
    return m_entry.source;
}

EntryRecord UndoTask::plannedEntry() const
{
    return {.source = inputPath(),
            .output = m_kind == Kind::Rename ? outputPath() : QString(),
            .action = m_kind == Kind::Rename      ? EntryRecord::Action::Rename
                      : m_kind == Kind::FromTrash ? EntryRecord::Action::Restore
                                                  : EntryRecord::Action::Work};
}

std::optional<Receipt> UndoTask::receipt() const
{
    if (m_receipt.sources.empty()) {
        return std::nullopt;
    }
    Receipt receipt = m_receipt;
    receipt.wayBack = FileEdit::bundle(m_waysBack);
    return receipt;
}

template <typename Step> void UndoTask::attempt(const Step &step)
try {
    step();
} catch (const std::exception &failure) {
    fail(QString::fromUtf8(failure.what()));
}

void UndoTask::doStartTask()
{
    if (!startFinishing()) {
        return;
    }
    if (m_kind == Kind::Rename) {
        return renameBack();
    }
    if (m_kind == Kind::Edit) {
        return putBytesBack();
    }
    for (const HistoryFile &file : m_entry.files) {
        if (m_kind == Kind::FromTrash && isTrashed(file)) {
            attempt([&] { bringBack(file); });
        } else if (m_kind == Kind::IntoTrash && file.isOutput) {
            attempt([&] { trashAgain(file); });
        }
    }
    tellWhatIsBack();
}

/// Of a job that failed with some of its files: nobody is to think that nothing happened.
void UndoTask::tellWhatIsBack()
{
    constexpr qsizetype mostNamed = 10;
    const auto &files = m_kind == Kind::IntoTrash ? m_receipt.sources : m_receipt.outputs;
    if (!error() || files.empty()) {
        return;
    }
    QStringList names;
    for (const auto &file : files) {
        names.append(file.path);
    }
    const auto more = static_cast<int>(std::max<qsizetype>(0, names.size() - mostNamed));
    const QString named = names.mid(0, mostNamed).join(QStringLiteral(", "));
    results()->appendLine(more > 0 ? tr("Taken back all the same: %1, and %n more.", nullptr, more).arg(named)
                                   : tr("Taken back all the same: %1.").arg(named),
                          *this);
}

void UndoTask::renameBack()
{
    const auto stamp = FileStamp::of(m_entry.output);
    if (!stamp && m_entry.sourceIsAsItWas(m_entry.source)) {
        return; // by an earlier undo that got no further
    }
    if (!stamp) {
        refuse(tr("%1 is not there any more.").arg(m_entry.output));
    }
    if (const auto problem = FileCommit::commit(m_entry.output, m_entry.source, FileCommit::Existing::Keep)) {
        refuse(tr("%1 could not be given its old name %2: %3.")
                   .arg(m_entry.output, m_entry.source, problem->text));
    }
    m_receipt = {.sources = {{m_entry.output, *stamp}}, .outputs = {{m_entry.source, *stamp}}};
}

void UndoTask::putBytesBack()
{
    const std::vector<Changed> changed = changedBy(m_entry);
    const auto files = static_cast<qsizetype>(changed.size());
    const QList<QByteArray> packed = FileEdit::unbundle(m_means->wayBackOf(m_entry.id), files);
    for (qsizetype index = 0; index < files; ++index) {
        attempt([&] { putBytesBack(changed[static_cast<std::size_t>(index)], packed.value(index)); });
    }
    tellWhatIsBack();
}

void UndoTask::putBytesBack(const Changed &file, const QByteArray &packed)
{
    const QString &path = file.before.path;
    if (!file.after.isAsItWas() && file.before.isAsItWas()) {
        return; // by an earlier undo that got no further
    }
    const auto edits = FileEdit::unpack(packed);
    if (!edits || edits->back().made != file.before.stamp.size) {
        refuse(tr("What %1 held before was not kept, or the journal has it damaged. It is left as it is.")
                   .arg(path));
    }
    const auto stream = StagedFileStream::asBefore(path, *edits);
    if (!stream) {
        refuse(tr("%1 was changed, moved or removed since, and is left as it is.").arg(path));
    }
    const FileStamp now = FileStamp::of(path).value_or(FileStamp());
    const EditLog log;
    if (!stream->commit()) {
        refuse(tr("%1 could not be written. Its disk may be full, or it may not be written to.").arg(path));
    }
    setTimes(path, file.before.stamp);
    m_receipt.sources.push_back({path, now});
    m_receipt.outputs.push_back({path, FileStamp::of(path).value_or(file.before.stamp)});
    m_waysBack.append(log.packed());
}

void UndoTask::bringBack(const HistoryFile &original)
{
    if (original.isAsItWas()) {
        return;
    }
    const QString trashed = inTrash(original, *m_means);
    if (trashed.isEmpty()) {
        refuse(tr("%1 is not in the trash any more.").arg(original.path));
    }
    if (const QString problem = restoreFromTrash(trashed, original.path); !problem.isEmpty()) {
        refuse(tr("%1: %2.").arg(original.path, problem));
    }
    const FileStamp now = FileStamp::of(original.path).value_or(original.stamp);
    m_receipt.sources.push_back({trashed, now});
    m_receipt.outputs.push_back({original.path, now});
}

void UndoTask::trashAgain(const HistoryFile &original)
{
    if (!original.isAsItWas()) {
        refuse(tr("%1 was changed, moved or removed since, and is left as it is.").arg(original.path));
    }
    const FileStamp now = FileStamp::of(original.path).value_or(original.stamp);
    if (const QString problem = moveToTrash(original.path); !problem.isEmpty()) {
        refuse(tr("%1: %2.").arg(original.path, problem));
    }
    m_receipt.sources.push_back({original.path, now, Receipt::Fate::Trashed});
}

} // namespace kruv
