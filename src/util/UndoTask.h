// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "tasks/StagedTask.h"

#include <QCoreApplication>

namespace kruv {

/// Takes back what one job of an earlier run did: gives a file its old name, puts back the bytes that tags
/// took the place of, brings originals out of the trash. Nothing is replaced, and a file that is not as the
/// job left it is left alone.
class UndoTask : public StagedTask
{
    Q_DECLARE_TR_FUNCTIONS(kruv::UndoTask)
public:
    UndoTask(TaskCompletionSink *queue, const HistoryEntry &entry);

    /// Whether there is something to be taken back that the journal still knows how to.
    static bool isPossible(const HistoryEntry &entry);

    /// The number in the journal's file of what is taken back.
    std::int64_t entry() const { return m_entry.id; }
    QString outputPath() const override;
    EntryRecord plannedEntry() const override;
    std::optional<Receipt> receipt() const override { return m_receipt; }

private:
    void doStartTask() override;
    void renameBack();
    void editBack();
    void restoreOriginals();
    bool isRename() const;

    const HistoryEntry m_entry;
    std::optional<Receipt> m_receipt;
};

} // namespace kruv
