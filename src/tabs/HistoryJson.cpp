// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/HistoryJson.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>

namespace kruv {

namespace {

QString utcTimeOf(std::int64_t milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC).toString(Qt::ISODateWithMs);
}

qint64 number(std::int64_t value)
{
    return value;
}

} // namespace

void HistoryJson::write(const QJsonObject &object)
{
    m_write(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
}

void HistoryJson::run(const HistoryRun &run)
{
    write({{QStringLiteral("event"), QStringLiteral("run")},
           {QStringLiteral("run"), number(run.id)},
           {QStringLiteral("command"), run.command},
           {QStringLiteral("arguments"), QJsonArray::fromStringList(run.arguments)},
           {QStringLiteral("folder"), run.folder},
           {QStringLiteral("version"), run.version},
           {QStringLiteral("started"), utcTimeOf(run.started)},
           {QStringLiteral("ended"), run.ended ? utcTimeOf(*run.ended) : QJsonValue()},
           {QStringLiteral("status"), states().of(run)},
           {QStringLiteral("jobs"), number(run.all)},
           {QStringLiteral("complete"), number(run.done)},
           {QStringLiteral("error"), number(run.failed)},
           {QStringLiteral("canceled"), number(run.cancelled)},
           {QStringLiteral("undone"), number(run.undone)}});
}

void HistoryJson::beginEntriesOf(const HistoryRun &run)
{
    HistoryJson::run(run);
}

void HistoryJson::entry(const HistoryEntry &entry)
{
    QJsonObject object{
        {QStringLiteral("event"), QStringLiteral("job")}, {QStringLiteral("run"), number(entry.run)},
        {QStringLiteral("command"), entry.command},       {QStringLiteral("time"), utcTimeOf(entry.changed)},
        {QStringLiteral("status"), states().of(entry)},   {QStringLiteral("action"), entry.action},
        {QStringLiteral("input"), entry.source},          {QStringLiteral("output"), entry.output},
        {QStringLiteral("message"), entry.reason}};
    if (entry.hasReceipt) {
        QJsonArray sources;
        QJsonArray outputs;
        for (const HistoryFile &file : entry.files) {
            QJsonObject each{{QStringLiteral("path"), file.path},
                             {QStringLiteral("bytes"), number(file.stamp.size)},
                             {QStringLiteral("changed"),
                              utcTimeOf(file.stamp.seconds * 1000 + file.stamp.nanoseconds / 1'000'000)}};
            each.insert(file.isOutput ? QStringLiteral("now") : QStringLiteral("original"),
                        file.isOutput ? HistoryStates::presentStateOf(file) : file.fate);
            (file.isOutput ? outputs : sources).append(each);
        }
        object.insert(QStringLiteral("seconds"), entry.seconds);
        object.insert(QStringLiteral("proof"), entry.proof);
        object.insert(QStringLiteral("digest"), entry.digest);
        object.insert(QStringLiteral("decoder"), entry.decoder);
        object.insert(QStringLiteral("sources"), sources);
        object.insert(QStringLiteral("outputs"), outputs);
    }
    write(object);
}

} // namespace kruv
