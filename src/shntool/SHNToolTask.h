// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "shntool/SHNToolDisplay.h"
#include "tasks/KruvAsyncNSTask.h"

namespace kruv {

/// A run of shntool that only reads a tab's files: what it prints is the report.
class SHNToolTask : public KruvAsyncNSTask
{
public:
    SHNToolTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments);

    /// Sets the title and the lower line, which is the title where none is given.
    void setTitles(const QString &title, const QString &lowerLine = {})
    {
        m_display.setTitles(title, lowerLine);
    }

    /// What the tool says where it calls a run a success that a person takes for none.
    void setFailureMark(const QString &text) { m_failureMark = text; }

    void startTask() override;

protected:
    void processTaskOutput(const QString &text) override { m_display.read(text); }
    void willEnd() override;

private:
    SHNToolDisplay m_display;
    QString m_failureMark;
};

} // namespace kruv
