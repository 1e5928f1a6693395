// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "util/BatchRename.h"

#include "base/PathNames.h"

#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>

namespace kruv::BatchRename {

namespace {

Q_LOGGING_CATEGORY(renameLog, "kruv.util", QtWarningMsg)

/// Also of a link that leads nowhere: its name is taken all the same.
bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// One step that never replaces a file. Returns 0 or an errno value.
int move(const QString &from, const QString &to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    // Some network and FUSE file systems don't know the flag.
    if (isTaken(to)) {
        return EEXIST;
    }
    return std::rename(source.constData(), target.constData()) == 0 ? 0 : errno;
}

/// Puts the first `count` files back under their old names; returns those that stayed under the new one.
QStringList takeBack(const QList<Move> &moves, qsizetype count)
{
    QStringList stuck;
    while (count-- > 0) {
        if (move(moves[count].to, moves[count].from) != 0) {
            stuck.append(moves[count].to);
        }
    }
    return stuck;
}

void requirePossible(const QList<Move> &moves)
{
    for (const Move &each : moves) {
        if (isTaken(each.to)) {
            throw Refused(QStringLiteral("File at \"%1\" already exists").arg(each.to));
        }
    }
    for (const Move &each : moves) {
        if (!isTaken(each.from)) {
            throw Refused(QStringLiteral("File at \"%1\" is gone. No file was renamed.").arg(each.from));
        }
    }
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

void carryOut(const QList<Move> &moves)
{
    requirePossible(moves);
    for (qsizetype done = 0; done < moves.size(); ++done) {
        const Move &each = moves[done];
        qCInfo(renameLog, "renaming %s to %s", qUtf8Printable(each.from), qUtf8Printable(each.to));
        const int problem = move(each.from, each.to);
        if (problem == 0) {
            continue;
        }
        QString reason = QStringLiteral("\"%1\" could not be renamed to \"%2\": %3.")
                             .arg(each.from, PathNames::lastPathComponent(each.to),
                                  QString::fromLocal8Bit(std::strerror(problem)));
        const QStringList stuck = takeBack(moves, done);
        reason += stuck.isEmpty() ? QStringLiteral(" No file was renamed.")
                                  : QStringLiteral(" These files have their new names already and could not "
                                                   "be put back:\n") +
                                        stuck.join(u'\n');
        throw Refused(reason);
    }
}

} // namespace kruv::BatchRename
