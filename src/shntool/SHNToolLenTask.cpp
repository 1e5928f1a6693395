// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolLenTask.h"

namespace kruv {

SHNToolLenTask::SHNToolLenTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &files,
                               LenType type, const SHNtoolOutputNamingFormatParser &parser)
    : KruvAsyncNSTask(queue, launchPath, QStringList{QStringLiteral("len")} + files)
    , m_type(type)
    , m_parser(parser)
{
    m_set.files = files;
    setTitle(tr("Running shntool LEN"));
    setTextFieldString(title());
    publish(&KruvTask::setTextFieldValue);
}

void SHNToolLenTask::startTask()
{
    setTopTextFieldString(tr("Running"));
    publish(&KruvTask::setTopTextFieldValue);
    KruvAsyncNSTask::startTask();
}

void SHNToolLenTask::willEnd()
{
    if (m_output.isEmpty()) {
        return;
    }
    const SHNToolLenReport report(m_output);
    appendResults(report.messages());
    appendResults(m_type == LenType::Normal ? report.normal() : report.byFileSet(m_set, m_parser));
}

} // namespace kruv
