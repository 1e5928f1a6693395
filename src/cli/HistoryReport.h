// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "journal/HistoryRun.h"

#include <QHash>
#include <QString>

namespace kruv {

/// How `kruv history` shows what it found: for a person, or for programs.
class HistoryReport
{
public:
    virtual ~HistoryReport() = default;

    virtual void beginRuns() {}
    virtual void run(const HistoryRun &run) = 0;
    virtual void beginEntriesOf(const HistoryRun &run) = 0;
    virtual void beginFound() {}
    virtual void entry(const HistoryEntry &entry) = 0;

protected:
    /// What programs read: running, broken-off, complete, undone, error or canceled.
    QString statusOf(const HistoryRun &run);
    /// not-begun, waiting, running, broken-off, complete, undone, error, canceled or removed.
    QString statusOf(const HistoryEntry &entry);
    /// Of an output: whether it is as the job left it. same, changed or missing.
    static QString presentStateOf(const HistoryFile &file);
    /// What became of the sources, each word once.
    static QString fatesOf(const HistoryEntry &entry);

private:
    bool hasEnded(const QString &process);
    QHash<QString, bool> m_ended; // processes that were looked for
};

} // namespace kruv
