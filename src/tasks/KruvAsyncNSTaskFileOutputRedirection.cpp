// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/KruvAsyncNSTaskFileOutputRedirection.h"

namespace kruv {

KruvAsyncNSTaskFileOutputRedirection::KruvAsyncNSTaskFileOutputRedirection(const TextOutput &file,
                                                                           TaskCompletionSink *queue,
                                                                           const QString &launchPath,
                                                                           const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_file(file)
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
    const QString problem = m_file.write(results()->results(), TextOutput::Content::Whole);
    if (problem.isEmpty()) {
        results()->setHasResults(false);
    } else {
        const QString text = results()->results(*this);
        results()->setResults(QString(), *this); // the reason comes first
        fail(tr("The file %1 could not be written: %2.").arg(fileName(), problem));
        appendResults(text);
    }
}

} // namespace kruv
