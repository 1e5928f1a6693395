// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanJson.h"

#include "tabs/PlanWords.h"

#include <QJsonArray>

namespace kruv::PlanJson {

QJsonObject entry(const PlanEntry &entry)
{
    QJsonObject object{{QStringLiteral("event"), QStringLiteral("planned")},
                       {QStringLiteral("action"), PlanWords::id(entry.action)},
                       {QStringLiteral("inputs"), QJsonArray::fromStringList(entry.sources)},
                       {QStringLiteral("output"), entry.output},
                       {QStringLiteral("inputBytes"), entry.sourceBytes},
                       {QStringLiteral("bytes"), entry.bytes},
                       {QStringLiteral("seconds"), entry.seconds},
                       {QStringLiteral("deletesOriginal"), entry.isMade() && entry.deletesOriginal}};
    const auto addText = [&object](const QString &name, const QString &text) {
        if (!text.isEmpty()) {
            object.insert(name, text);
        }
    };
    addText(QStringLiteral("reason"), entry.reason);
    addText(QStringLiteral("keepReason"), entry.keepReason);
    if (!entry.notes.isEmpty()) {
        object.insert(QStringLiteral("notes"), QJsonArray::fromStringList(entry.notes));
    }
    return object;
}

QJsonObject totals(const Plan::Totals &totals)
{
    return {{QStringLiteral("event"), QStringLiteral("plan")},
            {QStringLiteral("made"), totals.made},
            {QStringLiteral("replaced"), totals.replaced},
            {QStringLiteral("skipped"), totals.skipped},
            {QStringLiteral("refused"), totals.refused},
            {QStringLiteral("originalsDeleted"), totals.originalsDeleted},
            {QStringLiteral("inputBytes"), totals.sourceBytes},
            {QStringLiteral("bytes"), totals.bytes},
            {QStringLiteral("seconds"), totals.seconds}};
}

} // namespace kruv::PlanJson
