// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/PlanText.h"

#include "cli/Console.h"
#include "cli/JsonReporter.h"
#include "tabs/PlanJson.h"
#include "tabs/PlanWords.h"

#include <QJsonArray>
#include <QJsonObject>

namespace kruv::PlanText {

void write(const Plan &plan, Which which)
{
    constexpr int actionWidth = 9;
    for (const PlanEntry &entry : plan.entries()) {
        if (which == Which::LeftOut && entry.isMade()) {
            continue;
        }
        QString lines = PlanWords::action(entry).leftJustified(actionWidth) +
                        Console::printable(PlanWords::paths(entry)) + u'\n';
        for (const QString &note : PlanWords::notes(entry)) {
            lines += QString(actionWidth, u' ') + Console::printable(note) + u'\n';
        }
        Console::writeOut(lines);
    }
    for (const QString &warning : plan.warnings()) {
        Console::writeOut(Console::printable(warning) + u'\n');
    }
    Console::writeOut(PlanWords::totals(plan.totals()) + u'\n');
}

void writeJson(const Plan &plan)
{
    for (const PlanEntry &entry : plan.entries()) {
        JsonReporter::writeLine(PlanJson::entry(entry));
    }
    QJsonObject totals = PlanJson::totals(plan.totals());
    totals.insert(QStringLiteral("warnings"), QJsonArray::fromStringList(plan.warnings()));
    JsonReporter::writeLine(totals);
}

} // namespace kruv::PlanText
