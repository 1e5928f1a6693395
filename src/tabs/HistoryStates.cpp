// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/HistoryStates.h"

#include "journal/JournalWords.h"
#include "tasks/StagingLock.h"

#include <QStringList>

namespace kruv {

bool HistoryStates::hasEnded(const QString &process)
{
    const auto known = m_ended.constFind(process);
    return known != m_ended.cend() ? *known
                                   : *m_ended.insert(process, StagingLock::hasEnded(process.toUtf8()));
}

QString HistoryStates::of(const HistoryRun &run)
{
    if (!run.ended) {
        return hasEnded(run.process) ? QStringLiteral("broken-off")
                                     : QString::fromLatin1(JournalWords::running);
    }
    if (run.undone > 0) {
        return QString::fromLatin1(JournalWords::undone);
    }
    const EntryEnd::State state = run.failed > 0       ? EntryEnd::State::Failed
                                  : run.done < run.all ? EntryEnd::State::Cancelled
                                                       : EntryEnd::State::Done;
    return QString::fromLatin1(JournalWords::of(state));
}

QString HistoryStates::of(const HistoryEntry &entry)
{
    if (entry.state == QLatin1StringView(JournalWords::waiting) && hasEnded(entry.process)) {
        return QStringLiteral("not-begun");
    }
    if (entry.state == QLatin1StringView(JournalWords::running) && hasEnded(entry.process)) {
        return QStringLiteral("broken-off");
    }
    return entry.state;
}

QString HistoryStates::presentStateOf(const HistoryFile &file)
{
    if (file.isAsItWas()) {
        return QStringLiteral("same");
    }
    return FileStamp::of(file.path) ? QStringLiteral("changed") : QStringLiteral("missing");
}

QString HistoryStates::fatesOf(const HistoryEntry &entry)
{
    QStringList fates;
    for (const HistoryFile &file : entry.files) {
        if (!file.isOutput && !fates.contains(file.fate)) {
            fates.append(file.fate);
        }
    }
    return fates.join(u' ');
}

} // namespace kruv
