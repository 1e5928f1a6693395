// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/HistoryText.h"

#include "cli/Console.h"
#include "formats/FailureAdvice.h"
#include "tabs/HistoryWords.h"

#include <QDateTime>

namespace kruv {

namespace {

constexpr int numberWidth = 6;
constexpr int statusWidth = 12;

QString localTimeOf(std::int64_t milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toString(Qt::ISODate).replace(u'T', u' ');
}

QString column(const QString &status)
{
    return HistoryWords::status(status).leftJustified(statusWidth);
}

} // namespace

QString HistoryText::nameOf(const HistoryRun &run)
{
    const QString what = run.arguments.isEmpty() ? HistoryWords::command(run) : run.command;
    return tr("Run %1, %2, %3")
        .arg(QString::number(run.id), Console::printable(what), localTimeOf(run.started));
}

void HistoryText::run(const HistoryRun &run)
{
    constexpr int longestCommand = 100;
    Console::writeOut(
        QStringLiteral("%1  %2  %3%4  %5\n")
            .arg(QString::number(run.id).rightJustified(numberWidth), localTimeOf(run.started),
                 column(states().of(run)), HistoryWords::counts(run),
                 Console::elidedMiddle(Console::printable(HistoryWords::command(run)), longestCommand)));
}

void HistoryText::beginEntriesOf(const HistoryRun &run)
{
    Console::writeOut(Console::printable(HistoryWords::command(run)) + u'\n' +
                      tr("in %1, from %2").arg(Console::printable(run.folder), localTimeOf(run.started)) +
                      (run.ended ? tr(" to %1").arg(localTimeOf(*run.ended)) : QString()) +
                      QStringLiteral(": %1\n").arg(HistoryWords::counts(run)));
}

void HistoryText::beginFound()
{
    m_tellsRuns = true;
}

void HistoryText::entry(const HistoryEntry &entry)
{
    const QString run = m_tellsRuns ? QStringLiteral("%1  %2  ")
                                          .arg(QString::number(entry.run).rightJustified(numberWidth),
                                               localTimeOf(entry.changed))
                                    : QString();
    const QString notes = notesOn(entry);
    Console::writeOut(run + column(states().of(entry)) + Console::printable(HistoryWords::paths(entry)) +
                      (notes.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(notes)) + u'\n');
    for (const QString &line : FailureAdvice::essence(entry.reason).split(u'\n', Qt::SkipEmptyParts)) {
        Console::writeOut(QString(statusWidth, u' ') + Console::printable(line) + u'\n');
    }
}

QString HistoryText::notesOn(const HistoryEntry &entry) const
{
    QStringList notes = HistoryWords::notes(entry);
    if (m_tellsRuns && !entry.digest.isEmpty()) {
        notes.insert(entry.proof.isEmpty() ? 0 : 1, entry.digest);
    }
    return Console::printable(notes.join(QStringLiteral(", ")));
}

} // namespace kruv
