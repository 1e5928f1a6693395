// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/VerifyTask.h"

#include "base/PathNames.h"

namespace kruv {

VerifyTask::VerifyTask(std::shared_ptr<KruvTaskResults> results, TaskCompletionSink *queue,
                       const QString &launchPath, const QStringList &arguments)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_fileName(PathNames::lastPathComponent(arguments.at(1)))
{
    setTitle(m_fileName);
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
    setResults(std::move(results));
}

void VerifyTask::startTask()
{
    setTopTextFieldString(tr("Verifying"));
    publish(&KruvTask::setTopTextFieldValue);
    KruvAsyncNSTask::startTask();
}

} // namespace kruv
