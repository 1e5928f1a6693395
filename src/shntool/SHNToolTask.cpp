// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolTask.h"

#include "shntool/SHNToolOutput.h"

namespace kruv {

SHNToolTask::SHNToolTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments,
                         const SHNToolProgress &progress)
    : KruvAsyncNSTask(queue, launchPath, arguments)
    , m_progress(progress)
{
}

void SHNToolTask::setTitles(const QString &title, const QString &lowerLine)
{
    setTitle(title);
    setTextFieldString(lowerLine.isEmpty() ? title : lowerLine);
    publish(&KruvTask::setTextFieldValue);
}

void SHNToolTask::startTask()
{
    setTopTextFieldString(QStringLiteral("Running"));
    publish(&KruvTask::setTopTextFieldValue);
    KruvAsyncNSTask::startTask();
}

void SHNToolTask::processTaskOutput(const QString &text)
{
    m_output.append(text);
    const QString &line = m_output.currentLine();
    if (const QString name = SHNToolOutput::fileName(line); m_progress.namesFile && !name.isEmpty()) {
        setTextFieldString(name);
    }
    showPercentage(line);
    publish(&KruvTask::setCombinedStatus);
}

void SHNToolTask::showPercentage(const QString &line)
{
    const QString percentage = SHNToolOutput::percentage(line);
    if (!percentage.isEmpty()) {
        const double value = percentage.toDouble();
        setProgressIndicatorValue(value);
        if (m_progress.text) {
            QString text = QString::fromLatin1(m_progress.text);
            text.replace(QStringLiteral("%2"), SHNToolOutput::phase(line));
            setTopTextFieldString(
                text.arg(m_progress.asWritten ? percentage : QString::number(value, 'f', 6)));
        }
    } else if (m_progress.unreadable && line.contains(u'%')) {
        setTopTextFieldString(QString::fromLatin1(m_progress.unreadable));
    }
}

void SHNToolTask::willEnd()
{
    const QString output = m_output.text();
    appendResults(output);
    if (!m_failureMark.isEmpty() && !cancelled() && output.contains(m_failureMark)) {
        setError(true);
    }
}

} // namespace kruv
