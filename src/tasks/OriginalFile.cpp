// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OriginalFile.h"

#include "base/FileStamp.h"
#include "base/Util.h"
#include "tasks/KruvTask.h"
#include "tasks/StagedOutputs.h"
#include "tasks/TaskCompletionSink.h"

#include <QCoreApplication>

namespace kruv::OriginalFile {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::OriginalFile)
};

} // namespace

void deleteAfterCommit(KruvTask &task, const QString &source, const FileStamp &read,
                       const StagedOutputs &outputs)
{
    if (!task.deleteOriginal() || task.error() || task.cancelled() || !task.queue()) {
        return;
    }
    if (outputs.committed().isEmpty() || !outputs.isDurable()) {
        return keep(task, source, Text::tr("its output is missing, empty or not safely on the disk"));
    }
    const auto now = FileStamp::of(source);
    if (now && *now != read) {
        return keep(task, source, Text::tr("it was changed after it was read, and its output lacks that"));
    }
    if (const QString problem = Util::deleteFile(source, task.queue()->preferences()); !problem.isEmpty()) {
        keep(task, source, Text::tr("%1; its output is complete").arg(problem));
    }
}

void keep(KruvTask &task, const QString &source, const QString &reason)
{
    task.setError(true);
    task.results()->appendLine(Text::tr("The original %1 was kept: %2.").arg(source, reason), task);
}

} // namespace kruv::OriginalFile
