// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/JsonReporter.h"

#include "cli/Console.h"
#include "tasks/KruvTask.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace kruv {

namespace {

QJsonObject event(const char *name, const KruvTask &task)
{
    return {{QStringLiteral("event"), QLatin1StringView(name)},
            {QStringLiteral("title"), task.title()},
            {QStringLiteral("input"), task.inputPath()},
            {QStringLiteral("output"), task.outputPath()}};
}

QJsonObject describe(const DamageNote &damage)
{
    QJsonArray places;
    for (const DamageNote::Place &place : damage.places) {
        places.append(QJsonObject{
            {QStringLiteral("from"), damage.seconds(place.firstSample)},
            {QStringLiteral("to"), damage.seconds(place.firstSample + place.samples)},
            {QStringLiteral("firstSample"), static_cast<qint64>(place.firstSample)},
            {QStringLiteral("samples"), static_cast<qint64>(place.samples)},
        });
    }
    return {{QStringLiteral("places"), places},
            {QStringLiteral("damagedSamples"), static_cast<qint64>(damage.damagedSamples())},
            {QStringLiteral("allSamples"), static_cast<qint64>(damage.allSamples)}};
}

QString statusOf(const KruvTask &task)
{
    switch (JobReporter::endOf(task)) {
    case TaskState::Outcome::Cancelled:
        return QStringLiteral("canceled");
    case TaskState::Outcome::Failed:
        return QStringLiteral("error");
    case TaskState::Outcome::Complete:
        break;
    }
    return QStringLiteral("complete");
}

} // namespace

void JsonReporter::writeLine(const QJsonObject &object)
{
    Console::writeOut(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + u'\n');
}

void JsonReporter::started(const KruvTask &task)
{
    writeLine(event("started", task));
}

void JsonReporter::progressed(const KruvTask &task)
{
    QJsonObject object = event("progress", task);
    object.insert(QStringLiteral("percent"), task.progressIndicator().value);
    object.insert(QStringLiteral("text"), task.topTextField().text);
    writeLine(object);
}

void JsonReporter::ended(const KruvTask &task, const Totals &)
{
    QJsonObject object = event("ended", task);
    object.insert(QStringLiteral("status"), statusOf(task));
    object.insert(QStringLiteral("message"), task.error() ? failureMessage(task) : QString());
    if (const QStringList remarks = task.remarks(); !remarks.isEmpty()) {
        object.insert(QStringLiteral("remarks"), QJsonArray::fromStringList(remarks));
    }
    if (const auto damage = task.damage()) {
        object.insert(QStringLiteral("damage"), describe(*damage));
    }
    if (const ProofNote proof = task.proof(); proof.holds()) {
        object.insert(QStringLiteral("proof"), proof.kind);
        object.insert(QStringLiteral("digest"), proof.digest);
        object.insert(QStringLiteral("decoder"), proof.decoder);
        if (!proof.words.isEmpty()) {
            object.insert(QStringLiteral("words"), proof.words);
        }
    } else if (!proof.unproven.isEmpty()) {
        object.insert(QStringLiteral("proof"), QStringLiteral("none"));
        object.insert(QStringLiteral("unproven"), proof.unproven);
    }
    writeLine(object);
}

void JsonReporter::results(const QString &title, const QString &text)
{
    writeLine({{QStringLiteral("event"), QStringLiteral("results")},
               {QStringLiteral("title"), title},
               {QStringLiteral("text"), text}});
}

void JsonReporter::message(const QString &line)
{
    Console::complain(line);
}

void JsonReporter::summary(const Totals &totals)
{
    writeLine({{QStringLiteral("event"), QStringLiteral("summary")},
               {QStringLiteral("complete"), totals.complete},
               {QStringLiteral("error"), totals.failed},
               {QStringLiteral("canceled"), totals.cancelled + totals.notBegun},
               {QStringLiteral("notBegun"), totals.notBegun},
               {QStringLiteral("seconds"), totals.seconds}});
}

} // namespace kruv
