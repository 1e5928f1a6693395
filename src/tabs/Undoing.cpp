// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/Undoing.h"

#include "journal/Journal.h"
#include "journal/JournalFile.h"
#include "tasks/KruvTaskQueue.h"
#include "tasks/RunRecorder.h"
#include "util/UndoTask.h"

#include <algorithm>
#include <memory>

namespace kruv {

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

Undoing::Undoing(const HistoryRun &run)
{
    History(JournalFile::usualPath()).forEachEntryOf(run.id, [this](const HistoryEntry &entry) {
        if (UndoTask::isPossible(entry)) {
            m_entries.push_back(entry);
        } else if (entry.hasReceipt) {
            ++m_othersDone;
        }
    });
    std::ranges::reverse(m_entries);
}

void Undoing::queueJobs(KruvTaskQueue &queue, Journal &journal)
{
    connect(&queue, &KruvTaskQueue::taskEnded, this, [&journal](const KruvTask &task) {
        const auto *undo = dynamic_cast<const UndoTask *>(&task);
        if (undo && undo->state().whatWasDone() == TaskState::Outcome::Complete) {
            journal.setUndone(undo->entry());
        }
    });
    std::vector<std::shared_ptr<KruvTask>> jobs;
    for (const HistoryEntry &entry : m_entries) {
        jobs.push_back(std::make_shared<UndoTask>(&queue, entry));
    }
    queue.addTasks(jobs);
}

} // namespace kruv
