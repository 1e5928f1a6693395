// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OriginalFile.h"

#include "base/Util.h"
#include "tasks/KruvTask.h"
#include "tasks/StagedOutputs.h"
#include "tasks/TaskCompletionSink.h"

namespace kruv::OriginalFile {

void deleteAfterCommit(KruvTask &task, const QString &source, const StagedOutputs &outputs)
{
    if (!task.deleteOriginal() || task.error() || task.cancelled() || !task.queue()) {
        return;
    }
    if (outputs.committed().isEmpty() || !outputs.isDurable()) {
        keep(task, source, QStringLiteral("its output is missing, empty or not safely on the disk"));
    } else if (!Util::deleteFile(source, task.queue()->preferences())) {
        keep(task, source, QStringLiteral("it could not be deleted; its output is complete"));
    }
}

void keep(KruvTask &task, const QString &source, const QString &reason)
{
    task.setError(true);
    task.results()->appendLine(QStringLiteral("The original %1 was kept: %2.").arg(source, reason), task);
}

} // namespace kruv::OriginalFile
