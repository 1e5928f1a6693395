// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/HistoryCsv.h"

#include <QDateTime>

namespace kruv {

namespace {

QString quoted(const QString &value)
{
    const bool isPlain = !value.contains(u',') && !value.contains(u'"') && !value.contains(u'\n') &&
                         !value.contains(u'\r') && value.trimmed() == value;
    return isPlain ? value : u'"' + QString(value).replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString utcSecondsOf(std::int64_t milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODate);
}

} // namespace

void HistoryCsv::write(const QStringList &values)
{
    QStringList cells;
    for (const QString &value : values) {
        cells.append(quoted(value));
    }
    m_write(cells.join(u',') + QStringLiteral("\r\n"));
}

void HistoryCsv::nameEntryColumns()
{
    m_write(QStringLiteral("run,time,command,status,action,input,output,seconds,proof,digest,decoder,"
                           "original,message\r\n"));
}

void HistoryCsv::beginRuns()
{
    m_write(QStringLiteral("run,started,ended,command,status,jobs,complete,error,canceled,folder,"
                           "arguments\r\n"));
}

void HistoryCsv::run(const HistoryRun &run)
{
    write({QString::number(run.id), utcSecondsOf(run.started),
           run.ended ? utcSecondsOf(*run.ended) : QString(), run.command, states().of(run),
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
    write({QString::number(entry.run), utcSecondsOf(entry.changed), entry.command, states().of(entry),
           entry.action, entry.source, entry.output,
           entry.hasReceipt ? QString::number(entry.seconds, 'f', 3) : QString(), entry.proof, entry.digest,
           entry.decoder, HistoryStates::fatesOf(entry), entry.reason});
}

} // namespace kruv
