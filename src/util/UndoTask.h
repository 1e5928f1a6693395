// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "tasks/StagedTask.h"

#include <QCoreApplication>

#include <memory>

namespace kruv {

class StagedFileStream;
class UndoMeans;

/// Takes back what one job of an earlier run did: gives a file its old name, puts back the bytes that tags
/// took the place of, brings originals out of the trash, or back into it where it was that which was undone.
/// Nothing is replaced, and a file that is not as the job left it is left alone. Of a job on several files
/// each that can be is put back; it fails where one can't be, and may then be undone once more.
class UndoTask : public StagedTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UndoTask)
public:
    UndoTask(TaskCompletionSink *queue, const HistoryEntry &entry, std::shared_ptr<UndoMeans> means);

    /// What would be done; None where the journal knows no way, or that was done.
    enum class Kind { None, Rename, Edit, FromTrash, IntoTrash };
    static Kind kindFor(const HistoryEntry &entry);

    /// How taking it back would end, as far as its files tell; RestRefused where an earlier undo got a part
    /// of them.
    enum class Prospect { Possible, Refused, RestRefused };
    static Prospect prospectOf(const HistoryEntry &entry, UndoMeans &means);

    /// Gives files their old bytes back in whose change a kill may have come: of a job that has not ended.
    /// What is not as it left it stays.
    static void takeBackHalves(const HistoryEntry &entry, UndoMeans &means);

    /// The number in the journal's file of what is taken back.
    std::int64_t entry() const { return m_entry.id; }
    QString outputPath() const override;
    EntryRecord plannedEntry() const override;
    std::optional<Receipt> receipt() const override;

private:
    struct Changed
    {
        const HistoryFile &before;
        const HistoryFile &after;
    };
    static std::vector<Changed> changedBy(const HistoryEntry &entry);
    static std::unique_ptr<StagedFileStream> bytesBefore(const HistoryEntry &entry, std::size_t index,
                                                         UndoMeans &means);

    void doStartTask() override;
    void tellWhatIsBack();
    void renameBack();
    void putBytesBack();
    void putBytesBack(const Changed &file, const QByteArray &packed);
    void bringBack(const HistoryFile &original);
    void trashAgain(const HistoryFile &original);
    template <typename Step> void attempt(const Step &step);

    const HistoryEntry m_entry;
    const Kind m_kind;
    const std::shared_ptr<UndoMeans> m_means;
    Receipt m_receipt;
    QList<QByteArray> m_waysBack; // of the receipt's files
};

} // namespace kruv
