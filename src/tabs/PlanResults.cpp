// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanResults.h"

#include "base/FileStamp.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>

namespace kruv::PlanResults {

namespace {

const QString sizeKey = QStringLiteral("size");
const QString secondsKey = QStringLiteral("mtime");
const QString nanosecondsKey = QStringLiteral("mtimeNanoseconds");

Line lineOf(const QJsonObject &object)
{
    const QString status = object[QStringLiteral("status")].toString();
    Line line{.isDone = status == u"done",
              .hasFailed = status == u"failed",
              .reason = object[QStringLiteral("reason")].toString(),
              .json = object};
    if (const auto entry = object[QStringLiteral("entry")]; entry.isDouble() && entry.toInteger() >= 0) {
        line.entry = static_cast<std::size_t>(entry.toInteger());
    }
    return line;
}

} // namespace

QString shardKey()
{
    return QStringLiteral("shard");
}

QString planKey()
{
    return QStringLiteral("plan");
}

bool Line::isOf(const FileStamp &output) const
{
    return json.contains(sizeKey) && json[sizeKey].toInteger() == output.size &&
           json[secondsKey].toInteger() == output.seconds &&
           json[nanosecondsKey].toInteger() == output.nanoseconds;
}

void addStamp(QJsonObject &line, const FileStamp &output)
{
    line.insert(sizeKey, static_cast<qint64>(output.size));
    line.insert(secondsKey, static_cast<qint64>(output.seconds));
    line.insert(nanosecondsKey, static_cast<qint64>(output.nanoseconds));
}

QStringList read(const QString &folder, const QString &plan, const Visitor &visit)
{
    QStringList shards;
    QDirIterator files(folder, {QStringLiteral("*.jsonl")}, QDir::Files);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly)) {
            continue; // its entries are looked at once more
        }
        const QJsonObject header = QJsonDocument::fromJson(file.readLine()).object();
        if (header[planKey()].toString() != plan) {
            continue;
        }
        shards.append(header[shardKey()].toString());
        while (!file.atEnd()) {
            const QJsonObject object = QJsonDocument::fromJson(file.readLine()).object();
            if (object.contains(QStringLiteral("status"))) {
                visit(lineOf(object));
            }
        }
    }
    shards.removeDuplicates();
    return shards;
}

} // namespace kruv::PlanResults
