// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tabs/HistoryWords.h"

#include "journal/JournalWords.h"
#include "tabs/HistoryStates.h"

#include <QCoreApplication>
#include <QHash>

#include <algorithm>

namespace kruv::HistoryWords {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::HistoryWords)
};

/// For a shell.
QString quoted(const QString &argument)
{
    const auto isPlain = [](QChar each) {
        return each.isLetterOrNumber() || QStringLiteral("-_./=:,+@").contains(each);
    };
    const bool needsNone = !argument.isEmpty() && std::all_of(argument.begin(), argument.end(), isPlain);
    return needsNone ? argument : u'\'' + QString(argument).replace(u'\'', QStringLiteral("'\\''")) + u'\'';
}

QString fateText(const QString &fate)
{
    if (fate == QLatin1StringView(JournalWords::of(Receipt::Fate::Trashed))) {
        return Text::tr("original in the trash");
    }
    return fate == QLatin1StringView(JournalWords::of(Receipt::Fate::Deleted)) ? Text::tr("original deleted")
                                                                               : QString();
}

QString outputNote(const HistoryEntry &entry, const HistoryFile &output)
{
    const QString name = output.path.section(u'/', -1);
    const QString state = HistoryStates::presentStateOf(output);
    const bool isMaker =
        entry.hasAction(EntryRecord::Action::Make) || entry.hasAction(EntryRecord::Action::Replace);
    if (entry.isUndone() && (!isMaker || state == u"same")) {
        return isMaker ? Text::tr("%1 stays").arg(name) : QString(); // a name that went back is no loss
    }
    return state == u"changed"   ? Text::tr("%1 was changed since").arg(name)
           : state == u"missing" ? Text::tr("%1 is no longer there").arg(name)
                                 : QString();
}

} // namespace

QString status(const QString &status)
{
    const QHash<QString, QString> words{
        {QStringLiteral("complete"), Text::tr("done")},
        {QStringLiteral("undone"), Text::tr("undone")},
        {QStringLiteral("error"), Text::tr("failed")},
        {QStringLiteral("canceled"), Text::tr("canceled")},
        {QStringLiteral("removed"), Text::tr("removed")},
        {QStringLiteral("waiting"), Text::tr("waiting")},
        {QStringLiteral("not-begun"), Text::tr("not begun")},
        {QStringLiteral("running"), Text::tr("running")},
        {QStringLiteral("broken-off"), Text::tr("broken off")},
    };
    return words.value(status, status);
}

QString command(const HistoryRun &run)
{
    QString typed = QStringLiteral("kruv");
    for (const QString &argument : run.arguments) {
        typed += u' ' + quoted(argument);
    }
    return run.arguments.isEmpty() ? Text::tr("%1, in the window").arg(run.command) : typed;
}

QString counts(const HistoryRun &run)
{
    const auto all = static_cast<int>(run.all);
    if (run.undone > 0) {
        return Text::tr("%1 of %n job(s) undone", nullptr, all).arg(run.undone);
    }
    return run.done == run.all ? Text::tr("%n job(s)", nullptr, all)
                               : Text::tr("%1 of %n job(s) done", nullptr, all).arg(run.done);
}

QString paths(const HistoryEntry &entry)
{
    const bool hasTwo = !entry.source.isEmpty() && !entry.output.isEmpty() && entry.source != entry.output;
    return hasTwo ? entry.source + QStringLiteral(" → ") + entry.output
                  : (entry.source.isEmpty() ? entry.output : entry.source);
}

QStringList notes(const HistoryEntry &entry)
{
    QStringList notes;
    if (!entry.proof.isEmpty()) {
        notes.append(Text::tr("proven: %1").arg(entry.proof));
    }
    if (!entry.isUndone()) {
        for (const QString &fate : HistoryStates::fatesOf(entry).split(u' ', Qt::SkipEmptyParts)) {
            notes.append(fateText(fate));
        }
    }
    for (const HistoryFile &file : entry.files) {
        notes.append(file.isOutput ? outputNote(entry, file) : QString());
    }
    notes.removeAll(QString());
    return notes;
}

} // namespace kruv::HistoryWords
