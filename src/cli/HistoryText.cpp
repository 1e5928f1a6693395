// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/HistoryText.h"

#include "cli/Console.h"
#include "formats/FailureAdvice.h"
#include "journal/JournalWords.h"

#include <QDateTime>
#include <QHash>

namespace kruv {

namespace {

constexpr int numberWidth = 6;
constexpr int statusWidth = 12;

QString localTimeOf(std::int64_t milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds).toString(Qt::ISODate).replace(u'T', u' ');
}

/// What the words for programs are to a person, in a column.
QString column(const QString &status)
{
    const QHash<QString, QString> words{
        {QStringLiteral("complete"), HistoryText::tr("done")},
        {QStringLiteral("undone"), HistoryText::tr("undone")},
        {QStringLiteral("error"), HistoryText::tr("failed")},
        {QStringLiteral("canceled"), HistoryText::tr("canceled")},
        {QStringLiteral("removed"), HistoryText::tr("removed")},
        {QStringLiteral("waiting"), HistoryText::tr("waiting")},
        {QStringLiteral("not-begun"), HistoryText::tr("not begun")},
        {QStringLiteral("running"), HistoryText::tr("running")},
        {QStringLiteral("broken-off"), HistoryText::tr("broken off")},
    };
    return words.value(status, status).leftJustified(statusWidth);
}

QString commandOf(const HistoryRun &run)
{
    return run.arguments.isEmpty() ? HistoryText::tr("%1, in the window").arg(run.command)
                                   : QStringLiteral("kruv ") + run.arguments.join(u' ');
}

QString countsOf(const HistoryRun &run)
{
    const auto all = static_cast<int>(run.all);
    return run.done == run.all ? HistoryText::tr("%n job(s)", nullptr, all)
                               : HistoryText::tr("%1 of %n job(s) done", nullptr, all).arg(run.done);
}

QString pathsOf(const HistoryEntry &entry)
{
    const QString source = Console::printable(entry.source);
    const QString output = Console::printable(entry.output);
    return source.isEmpty() || output.isEmpty() ? source + output : source + QStringLiteral(" → ") + output;
}

QString fateText(const QString &fate)
{
    if (fate == QLatin1StringView(JournalWords::of(Receipt::Fate::Trashed))) {
        return HistoryText::tr("original in the trash");
    }
    return fate == QLatin1StringView(JournalWords::of(Receipt::Fate::Deleted))
               ? HistoryText::tr("original deleted")
               : QString();
}

} // namespace

void HistoryText::run(const HistoryRun &run)
{
    constexpr int longestCommand = 100;
    Console::writeOut(QStringLiteral("%1  %2  %3%4  %5\n")
                          .arg(QString::number(run.id).rightJustified(numberWidth), localTimeOf(run.started),
                               column(statusOf(run)), countsOf(run),
                               Console::elidedMiddle(Console::printable(commandOf(run)), longestCommand)));
}

void HistoryText::beginEntriesOf(const HistoryRun &run)
{
    Console::writeOut(Console::printable(commandOf(run)) + u'\n' +
                      tr("in %1, from %2").arg(Console::printable(run.folder), localTimeOf(run.started)) +
                      (run.ended ? tr(" to %1").arg(localTimeOf(*run.ended)) : QString()) +
                      QStringLiteral(": %1\n").arg(countsOf(run)));
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
    Console::writeOut(run + column(statusOf(entry)) + pathsOf(entry) +
                      (notes.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(notes)) + u'\n');
    for (const QString &line : FailureAdvice::essence(entry.reason).split(u'\n', Qt::SkipEmptyParts)) {
        Console::writeOut(QString(statusWidth, u' ') + Console::printable(line) + u'\n');
    }
}

QString HistoryText::notesOn(const HistoryEntry &entry) const
{
    QStringList notes;
    if (!entry.proof.isEmpty()) {
        notes.append(tr("proven: %1").arg(entry.proof));
    }
    if (m_tellsRuns && !entry.digest.isEmpty()) {
        notes.append(entry.digest);
    }
    for (const QString &fate : fatesOf(entry).split(u' ', Qt::SkipEmptyParts)) {
        notes.append(fateText(fate));
    }
    for (const HistoryFile &file : entry.files) {
        const QString name = Console::printable(file.path.section(u'/', -1));
        const QString state = file.isOutput ? presentStateOf(file) : QString();
        if (state == QStringLiteral("changed")) {
            notes.append(tr("%1 was changed since").arg(name));
        } else if (state == QStringLiteral("missing")) {
            notes.append(tr("%1 is no longer there").arg(name));
        }
    }
    notes.removeAll(QString());
    return notes.join(QStringLiteral(", "));
}

} // namespace kruv
