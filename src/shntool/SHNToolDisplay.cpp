// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolDisplay.h"

#include "shntool/SHNToolOutput.h"
#include "tasks/KruvTask.h"

namespace kruv {

SHNToolDisplay::SHNToolDisplay(KruvTask &task, const SHNToolProgress &progress)
    : m_task(task)
    , m_progress(progress)
{
}

void SHNToolDisplay::setTitles(const QString &title, const QString &lowerLine)
{
    m_task.setTitle(title);
    m_task.setTextFieldString(lowerLine.isEmpty() ? title : lowerLine);
    m_task.publish(&KruvTask::setTextFieldValue);
}

void SHNToolDisplay::start()
{
    m_task.setTopTextFieldString(tr("Running"));
    m_task.publish(&KruvTask::setTopTextFieldValue);
}

void SHNToolDisplay::read(const QString &piece)
{
    m_output.append(piece);
    const QString &line = m_output.currentLine();
    if (const QString name = SHNToolOutput::fileName(line); m_progress.namesFile && !name.isEmpty()) {
        m_task.setTextFieldString(name);
    }
    showPercentage(line);
    m_task.publish(&KruvTask::setCombinedStatus);
}

void SHNToolDisplay::showPercentage(const QString &line)
{
    if (const auto percentage = SHNToolOutput::percentage(line)) {
        m_task.setProgressIndicatorValue(*percentage);
        if (m_progress.text) {
            QString text = tr(m_progress.text);
            text.replace(QStringLiteral("%2"), SHNToolOutput::phase(line));
            m_task.setTopTextFieldString(
                text.arg(QString::number(*percentage, 'f', m_progress.asWritten ? 0 : 6)));
        }
    } else if (m_progress.unreadable && line.contains(u'%')) {
        m_task.setTopTextFieldString(tr(m_progress.unreadable));
    }
}

} // namespace kruv
