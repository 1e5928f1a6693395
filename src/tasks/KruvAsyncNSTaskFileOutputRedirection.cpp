// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"

#include "base/TextFile.h"

namespace kruv {

KruvAsyncNSTaskFileOutputRedirection::KruvAsyncNSTaskFileOutputRedirection(const QString &fileName,
                                                                           TaskCompletionSink *queue,
                                                                           const QString &launchPath,
                                                                           const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(fileName)
{
}

void KruvAsyncNSTaskFileOutputRedirection::startTask()
{
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    if (!m_subTitle.isEmpty()) {
        setTopTextFieldString(m_subTitle);
        publish(&KruvTask::setTopTextFieldValue);
    }
    KruvAsyncNSTask::startTask();
}

void KruvAsyncNSTaskFileOutputRedirection::cleanup()
{
    const QString problem = TextFile::write(m_fileName, results()->results());
    if (problem.isEmpty()) {
        results()->setHasResults(false);
    } else {
        fail(tr("The file %1 could not be written: %2.").arg(m_fileName, problem));
    }
}

} // namespace kruv
