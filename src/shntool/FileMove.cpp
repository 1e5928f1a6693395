// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/FileMove.h"

#include <QFile>
#include <QSaveFile>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace kruv::FileMove {

namespace {

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

/// Copies, and removes the source only when the copy lies whole at its place.
QString copyOver(const QString &from, const QString &to)
{
    QFile source(from);
    QSaveFile target(to);
    if (!source.open(QIODevice::ReadOnly)) {
        return source.errorString();
    }
    if (!target.open(QIODevice::WriteOnly)) {
        return target.errorString();
    }
    constexpr qint64 pieceSize = qint64{1024} * 1024;
    while (!source.atEnd()) {
        const QByteArray piece = source.read(pieceSize);
        if (piece.isEmpty() || target.write(piece) != piece.size()) {
            return piece.isEmpty() ? source.errorString() : target.errorString();
        }
    }
    if (!target.commit()) {
        return target.errorString();
    }
    source.remove();
    return {};
}

} // namespace

QString replace(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0) {
        return {};
    }
    return errno == EXDEV ? copyOver(from, to) : errorText(errno);
}

QString intoFreePlace(const QString &from, const QString &to)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != EINVAL) {
        return errorText(errno);
    }
    // Some network file systems can't look and rename in one step.
    struct stat there = {};
    return lstat(target.constData(), &there) == 0 ? errorText(EEXIST) : replace(from, to);
}

} // namespace kruv::FileMove
