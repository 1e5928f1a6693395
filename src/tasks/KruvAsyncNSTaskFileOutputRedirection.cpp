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
    if (TextFile::write(m_fileName, results()->results())) {
        results()->setHasResults(false);
    } else {
        fail(QStringLiteral("The file %1 could not be written: check that its folder exists, can be written "
                            "and has room.")
                 .arg(m_fileName));
    }
}

} // namespace kruv
