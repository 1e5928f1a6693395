// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/ReplayGainTask.h"

#include "base/PathNames.h"

namespace kruv {

ReplayGainTask::ReplayGainTask(TaskCompletionSink *queue, const QString &launchPath, What what,
                               const QStringList &files)
    : KruvAsyncNSTask(queue, launchPath,
                      QStringList{what == What::Add ? QStringLiteral("--add-replay-gain")
                                                    : QStringLiteral("--remove-replay-gain")} +
                          files)
    , m_folder(PathNames::folderOf(files.value(0)))
{
    setTitle(what == What::Add ? tr("Adding FLAC replay gain") : tr("Removing FLAC replay gain"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void ReplayGainTask::startTask()
{
    KruvAsyncNSTask::startTask();
    setTopTextFieldString(title());
    publish(&KruvTask::setTopTextFieldValue);
    startIndeterminateProgressBar(); // the tool tells nothing of its way
}

void ReplayGainTask::finalCleanup()
{
    if (!error()) {
        results()->setHasResults(false);
    }
}

} // namespace kruv
