// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanWords.h"

#include <QCoreApplication>
#include <QHash>
#include <QLocale>

#include <cmath>

namespace kruv::PlanWords {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::PlanWords)
};

QString files(const char *text, qsizetype count)
{
    return Text::tr(text, nullptr, static_cast<int>(count));
}

QString size(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

QString duration(double seconds)
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    const auto whole = static_cast<int>(std::lround(seconds));
    if (whole >= hour) {
        return Text::tr("%1 h %2 min")
            .arg(QString::number(whole / hour), QString::number(whole % hour / minute));
    }
    return whole >= minute
               ? Text::tr("%1 min %2 s").arg(QString::number(whole / minute), QString::number(whole % minute))
               : Text::tr("%1 s").arg(QString::number(seconds, 'f', whole < 10 ? 1 : 0));
}

} // namespace

QString id(PlanEntry::Action action)
{
    switch (action) {
    case PlanEntry::Action::Make:
        return QStringLiteral("make");
    case PlanEntry::Action::Replace:
        return QStringLiteral("replace");
    case PlanEntry::Action::Update:
        return QStringLiteral("update");
    case PlanEntry::Action::Check:
        return QStringLiteral("check");
    case PlanEntry::Action::Rename:
        return QStringLiteral("rename");
    case PlanEntry::Action::Copy:
        return QStringLiteral("copy");
    case PlanEntry::Action::Work:
        return QStringLiteral("work");
    case PlanEntry::Action::SkipDone:
        return QStringLiteral("skip-done");
    case PlanEntry::Action::SkipExisting:
        return QStringLiteral("skip-existing");
    case PlanEntry::Action::SkipOther:
        return QStringLiteral("skip-other");
    case PlanEntry::Action::Refuse:
        break;
    }
    return QStringLiteral("refuse");
}

QString action(const PlanEntry &entry)
{
    switch (entry.action) {
    case PlanEntry::Action::Make:
        return Text::tr("make");
    case PlanEntry::Action::Replace:
        return Text::tr("replace");
    case PlanEntry::Action::Update:
        return Text::tr("update");
    case PlanEntry::Action::Check:
        return Text::tr("check");
    case PlanEntry::Action::Rename:
        return Text::tr("rename");
    case PlanEntry::Action::Copy:
        return Text::tr("copy");
    case PlanEntry::Action::Work:
        return Text::tr("change");
    case PlanEntry::Action::SkipDone:
    case PlanEntry::Action::SkipExisting:
    case PlanEntry::Action::SkipOther:
        return Text::tr("skip");
    case PlanEntry::Action::Refuse:
        break;
    }
    return Text::tr("refuse");
}

QString paths(const PlanEntry &entry)
{
    const qsizetype more = entry.sources.size() - 1;
    QString source = entry.sources.value(0);
    if (more > 0) {
        source = files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%1 and %n more"), more).arg(source);
    }
    return source.isEmpty() || entry.output.isEmpty() ? source + entry.output
                                                      : source + QStringLiteral(" → ") + entry.output;
}

QStringList notes(const PlanEntry &entry)
{
    QStringList notes;
    if (!entry.reason.isEmpty()) {
        notes.append(entry.reason);
    }
    notes += entry.notes;
    if (entry.isMade() && !entry.keepReason.isEmpty()) {
        notes.append(Text::tr("The original stays: %1").arg(entry.keepReason));
    }
    if (entry.isMade() && entry.deletesOriginal && !entry.loss.isEmpty()) {
        notes.append(entry.loss + u'.');
    }
    if (entry.isMade() && entry.deletesOriginal) {
        notes.append(Text::tr("The original goes."));
    }
    return notes;
}

QString headline(const Plan &plan)
{
    using Action = PlanEntry::Action;
    QHash<Action, int> counts;
    int made = 0;
    for (const PlanEntry &entry : plan.entries()) {
        const bool isFile = !entry.sources.isEmpty(); // lists come by themselves
        counts[entry.action] += isFile;
        made += isFile && entry.isMade();
    }
    const struct
    {
        int count;
        const char *one;
        const char *many;
    } rows[] = {{counts[Action::Replace], QT_TRANSLATE_NOOP("kruv::PlanWords", "1 in place of what is there"),
                 QT_TRANSLATE_NOOP("kruv::PlanWords", "%Ln in place of what is there")},
                {counts[Action::SkipExisting] + counts[Action::SkipDone],
                 QT_TRANSLATE_NOOP("kruv::PlanWords", "1 is there already"),
                 QT_TRANSLATE_NOOP("kruv::PlanWords", "%Ln are there already")},
                {counts[Action::SkipOther], QT_TRANSLATE_NOOP("kruv::PlanWords", "1 is left out"),
                 QT_TRANSLATE_NOOP("kruv::PlanWords", "%Ln are left out")},
                {counts[Action::Refuse], QT_TRANSLATE_NOOP("kruv::PlanWords", "1 can't be made"),
                 QT_TRANSLATE_NOOP("kruv::PlanWords", "%Ln can't be made")}};
    QStringList parts{made == 0 ? Text::tr("Nothing will be made")
                                : files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%Ln will be made"), made)};
    for (const auto &row : rows) {
        if (row.count > 0) {
            parts.append(row.count == 1 ? Text::tr(row.one) : files(row.many, row.count));
        }
    }
    return parts.join(QStringLiteral(" · "));
}

QStringList costs(const Plan::Totals &totals)
{
    QStringList parts;
    if (totals.sourceBytes > 0) {
        parts.append(Text::tr("%1 to read").arg(size(totals.sourceBytes)));
    }
    if (totals.bytes > 0) {
        parts.append(Text::tr("about %1 to write").arg(size(totals.bytes)));
    }
    if (totals.seconds > 0) {
        parts.append(Text::tr("about %1").arg(duration(totals.seconds)));
    }
    return parts;
}

QString totals(const Plan::Totals &totals)
{
    QStringList parts{files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%n to do"), totals.made)};
    if (totals.replaced > 0) {
        parts.append(files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%n of them replaced"), totals.replaced));
    }
    if (totals.skipped > 0) {
        parts.append(files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%n skipped"), totals.skipped));
    }
    if (totals.refused > 0) {
        parts.append(files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%n refused"), totals.refused));
    }
    if (totals.originalsDeleted > 0) {
        parts.append(files(QT_TRANSLATE_NOOP("kruv::PlanWords", "%n original(s) deleted afterwards"),
                           totals.originalsDeleted));
    }
    parts += costs(totals);
    return parts.join(QStringLiteral(", ")) + u'.';
}

} // namespace kruv::PlanWords
