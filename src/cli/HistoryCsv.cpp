// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/HistoryCsv.h"

#include "cli/Console.h"

#include <QDateTime>

namespace kruv {

namespace {

QString quoted(const QString &value)
{
    const bool isPlain = !value.contains(u',') && !value.contains(u'"') && !value.contains(u'\n') &&
                         !value.contains(u'\r') && value.trimmed() == value;
    return isPlain ? value : u'"' + QString(value).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

void writeRow(const QStringList &values)
{
    QStringList cells;
    for (const QString &value : values) {
        cells.append(quoted(value));
    }
    Console::writeOut(cells.join(u',') + QStringLiteral("\r\n"));
}

QString utcSecondsOf(std::int64_t milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODate);
}

void nameEntryColumns()
{
    Console::writeOut(
        QStringLiteral("run,time,command,status,action,input,output,seconds,proof,digest,decoder,"
                       "original,message\r\n"));
}

} // namespace

void HistoryCsv::beginRuns()
{
    Console::writeOut(QStringLiteral("run,started,ended,command,status,jobs,complete,error,canceled,folder,"
                                     "arguments\r\n"));
}

void HistoryCsv::run(const HistoryRun &run)
{
    writeRow({QString::number(run.id), utcSecondsOf(run.started),
              run.ended ? utcSecondsOf(*run.ended) : QString(), run.command, statusOf(run),
              QString::number(run.all), QString::number(run.done), QString::number(run.failed),
              QString::number(run.cancelled), run.folder, run.arguments.join(u' ')});
}

void HistoryCsv::beginEntriesOf(const HistoryRun &)
{
    nameEntryColumns();
}

void HistoryCsv::beginFound()
{
    nameEntryColumns();
}

void HistoryCsv::entry(const HistoryEntry &entry)
{
    writeRow({QString::number(entry.run), utcSecondsOf(entry.changed), entry.command, statusOf(entry),
              entry.action, entry.source, entry.output,
              entry.hasReceipt ? QString::number(entry.seconds, 'f', 3) : QString(), entry.proof,
              entry.digest, entry.decoder, fatesOf(entry), entry.reason});
}

} // namespace kruv
