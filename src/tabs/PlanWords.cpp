// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/PlanWords.h"

#include <QCoreApplication>
#include <QHash>
#include <QLocale>

#include <algorithm>
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

/// What an action is called by programs and by persons.
struct Names
{
    PlanEntry::Action action;
    const char *id;
    const char *word;
};

constexpr Names actionNames[] = {
    {PlanEntry::Action::Make, "make", QT_TRANSLATE_NOOP("kruv::PlanWords", "make")},
    {PlanEntry::Action::Replace, "replace", QT_TRANSLATE_NOOP("kruv::PlanWords", "replace")},
    {PlanEntry::Action::Update, "update", QT_TRANSLATE_NOOP("kruv::PlanWords", "update")},
    {PlanEntry::Action::Check, "check", QT_TRANSLATE_NOOP("kruv::PlanWords", "check")},
    {PlanEntry::Action::Rename, "rename", QT_TRANSLATE_NOOP("kruv::PlanWords", "rename")},
    {PlanEntry::Action::Copy, "copy", QT_TRANSLATE_NOOP("kruv::PlanWords", "copy")},
    {PlanEntry::Action::Work, "work", QT_TRANSLATE_NOOP("kruv::PlanWords", "change")},
    {PlanEntry::Action::SkipDone, "skip-done", QT_TRANSLATE_NOOP("kruv::PlanWords", "skip")},
    {PlanEntry::Action::SkipExisting, "skip-existing", QT_TRANSLATE_NOOP("kruv::PlanWords", "skip")},
    {PlanEntry::Action::SkipOther, "skip-other", QT_TRANSLATE_NOOP("kruv::PlanWords", "skip")},
    {PlanEntry::Action::Refuse, "refuse", QT_TRANSLATE_NOOP("kruv::PlanWords", "refuse")},
};

const Names &namesOf(PlanEntry::Action action)
{
    return *std::ranges::find(actionNames, action, &Names::action);
}

} // namespace

QString id(PlanEntry::Action action)
{
    return QString::fromLatin1(namesOf(action).id);
}

QString action(const PlanEntry &entry)
{
    return Text::tr(namesOf(entry.action).word);
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
