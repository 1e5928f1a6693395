// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "journal/HistoryRun.h"

#include <QHash>
#include <QString>

namespace kruv {

/// In which state runs and their jobs are, in words for programs. One thread.
class HistoryStates
{
public:
    /// running, broken-off, complete, undone, error or canceled.
    QString of(const HistoryRun &run);
    /// not-begun, waiting, running, broken-off, complete, undone, error, canceled or removed.
    QString of(const HistoryEntry &entry);
    /// Of an output: whether it is as the job left it. same, changed or missing.
    static QString presentStateOf(const HistoryFile &file);
    /// What became of the sources, each word once.
    static QString fatesOf(const HistoryEntry &entry);

private:
    bool hasEnded(const QString &process);
    QHash<QString, bool> m_ended; // processes that were looked for
};

} // namespace kruv
