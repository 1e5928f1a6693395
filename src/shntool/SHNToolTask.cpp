// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolTask.h"

namespace kruv {

SHNToolTask::SHNToolTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_display(*this, {})
{
}

void SHNToolTask::startTask()
{
    m_display.start();
    KruvAsyncNSTask::startTask();
}

void SHNToolTask::willEnd()
{
    const QString output = m_display.text();
    appendResults(output);
    if (!m_failureMark.isEmpty() && !cancelled() && output.contains(m_failureMark)) {
        setError(true);
    }
}

} // namespace kruv
