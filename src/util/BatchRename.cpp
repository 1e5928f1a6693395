// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/BatchRename.h"

#include "base/PathNames.h"
#include "tasks/FileCommit.h"

#include <QCoreApplication>
#include <QLoggingCategory>

namespace kruv::BatchRename {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::BatchRename)
};

Q_LOGGING_CATEGORY(renameLog, "kruv.util", QtWarningMsg)

/// One step that never replaces a file.
std::optional<FileCommit::Problem> move(const QString &from, const QString &to)
{
    return FileCommit::commit(from, to, FileCommit::Existing::Keep);
}

/// Puts the first `count` files back under their old names; returns those that stayed under the new one.
QStringList takeBack(const QList<Move> &moves, qsizetype count)
{
    QStringList stuck;
    while (count-- > 0) {
        if (move(moves[count].to, moves[count].from)) {
            stuck.append(moves[count].to);
        }
    }
    return stuck;
}

} // namespace

QList<Move> plan(const QStringList &files, const QString &prefix)
{
    constexpr int lastPadded = 9;
    QList<Move> moves;
    int number = 0;
    for (const QString &file : files) {
        ++number;
        const QString name = QStringLiteral("%1%2%3").arg(
            prefix, number <= lastPadded ? QStringLiteral("0") : QString(), QString::number(number));
        const QString extension = PathNames::extension(file);
        const QString folder = PathNames::folderOf(file);
        moves.append({file, (folder.endsWith(u'/') ? folder : folder + u'/') + name +
                                (extension.isEmpty() ? QString() : u'.' + extension)});
    }
    return moves;
}

void requirePossible(const QList<Move> &moves)
{
    for (const Move &each : moves) {
        if (FileCommit::isTaken(each.to)) {
            throw Refused(Text::tr("File at \"%1\" already exists").arg(each.to));
        }
    }
    for (const Move &each : moves) {
        if (!FileCommit::isTaken(each.from)) {
            throw Refused(Text::tr("File at \"%1\" is gone. No file was renamed.").arg(each.from));
        }
    }
}

void carryOut(const QList<Move> &moves)
{
    for (qsizetype done = 0; done < moves.size(); ++done) {
        const Move &each = moves[done];
        qCInfo(renameLog, "renaming %s to %s", qUtf8Printable(each.from), qUtf8Printable(each.to));
        const auto problem = move(each.from, each.to);
        if (!problem) {
            continue;
        }
        const QStringList stuck = takeBack(moves, done);
        const QString reason =
            stuck.isEmpty()
                ? Text::tr("\"%1\" could not be renamed to \"%2\": %3. No file was renamed.")
                : Text::tr("\"%1\" could not be renamed to \"%2\": %3. These files have their new names "
                           "already and could not be put back:\n%4");
        // Names may look like places for arguments, so all go in at once.
        const QString newName = PathNames::lastPathComponent(each.to);
        throw Refused(stuck.isEmpty() ? reason.arg(each.from, newName, problem->text)
                                      : reason.arg(each.from, newName, problem->text, stuck.join(u'\n')));
    }
}

} // namespace kruv::BatchRename
