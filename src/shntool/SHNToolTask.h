// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/KruvAsyncNSTask.h"
#include "tasks/TerminalText.h"

namespace kruv {

/// How the progress of one of the tool's modes is shown.
struct SHNToolProgress
{
    /// Upper line; %1 is the percentage, %2 the phase. Null where it stays as it is.
    const char *text = nullptr;
    /// Upper line while the percentage can't be read, or null.
    const char *unreadable = nullptr;
    /// The percentage as the tool writes it, else with six decimals.
    bool asWritten = false;
    /// The lower line names the file that the tool works on.
    bool namesFile = false;
};

/// A run of shntool over a tab's files. Shows its progress, and keeps what it printed as it would stand on a
/// terminal, which is the report of the commands that only read.
class SHNToolTask : public KruvAsyncNSTask
{
public:
    SHNToolTask(TaskCompletionSink *queue, const QString &launchPath, const QStringList &arguments,
                const SHNToolProgress &progress = {});

    /// Sets the title and the lower line, which is the title where none is given.
    void setTitles(const QString &title, const QString &lowerLine = {});

    /// What the tool says where it calls a run a success that a person takes for none.
    void setFailureMark(const QString &text) { m_failureMark = text; }

    void startTask() override;

protected:
    void processTaskOutput(const QString &text) override;
    void willEnd() override;

private:
    void showPercentage(const QString &line);

    const SHNToolProgress m_progress;
    QString m_failureMark;
    TerminalText m_output;
};

} // namespace kruv
