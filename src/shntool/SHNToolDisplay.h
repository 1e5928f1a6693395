// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "tasks/TerminalText.h"

#include <QCoreApplication>
#include <QString>

namespace kruv {

class KruvTask;

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

/// Shows what shntool prints in the status of a job, and keeps it as it would stand on a terminal.
class SHNToolDisplay
{
    Q_DECLARE_TR_FUNCTIONS(kruv::SHNToolDisplay)
public:
    /// `task` owns this.
    SHNToolDisplay(KruvTask &task, const SHNToolProgress &progress);

    /// Sets the title and the lower line, which is the title where none is given.
    void setTitles(const QString &title, const QString &lowerLine = {});
    void start();
    void read(const QString &piece);
    QString text() const { return m_output.text(); }

private:
    void showPercentage(const QString &line);

    KruvTask &m_task;
    const SHNToolProgress m_progress;
    TerminalText m_output;
};

} // namespace kruv
