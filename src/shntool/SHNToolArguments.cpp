// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shntool/SHNToolArguments.h"

namespace kruv::SHNToolArguments {

QStringList eachFile(QStringView word, const QString &folder, const QString &format, const QStringList &files)
{
    return QStringList{word.toString(),      QStringLiteral("-d"),   folder, QStringLiteral("-o"), format,
                       QStringLiteral("-O"), QStringLiteral("never")} +
           files;
}

QStringList join(const QString &folder, const QString &format, const QStringList &files)
{
    return QStringList{QStringLiteral("join"), QStringLiteral("-o"),   format,
                       QStringLiteral("-n"),   QStringLiteral("-d"),   folder,
                       QStringLiteral("-O"),   QStringLiteral("never")} +
           files;
}

QStringList split(const QString &splitPoints, const QString &folder, const QString &format,
                  const QString &file)
{
    return {QStringLiteral("split"),
            QStringLiteral("-f"),
            splitPoints,
            QStringLiteral("-o"),
            format,
            QStringLiteral("-d"),
            folder,
            file};
}

} // namespace kruv::SHNToolArguments
