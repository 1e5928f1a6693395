// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/MountTable.h"

#include <QFile>

namespace kruv::MountTable {

namespace {

/// Blanks, tabs, line breaks and backslashes stand in the table as "\" and three octal digits.
QString unescaped(const QByteArray &field)
{
    constexpr qsizetype digits = 3;
    QByteArray plain;
    for (qsizetype at = 0; at < field.size(); ++at) {
        bool isNumber = false;
        const int value = field[at] == '\\' ? field.mid(at + 1, digits).toInt(&isNumber, 8) : 0;
        plain += isNumber ? static_cast<char>(value) : field[at];
        at += isNumber ? digits : 0;
    }
    return QFile::decodeName(plain);
}

} // namespace

QList<Mount> parse(const QByteArray &mountinfo)
{
    constexpr qsizetype pointField = 4;
    QList<Mount> mounts;
    for (const QByteArray &line : mountinfo.split('\n')) {
        const QList<QByteArray> fields = line.split(' ');
        // Any number of optional fields ends with a "-"; the type and the source follow.
        const qsizetype source = fields.indexOf("-", pointField + 1) + 2;
        if (source > pointField + 2 && source < fields.size()) {
            mounts.append({unescaped(fields[source]), unescaped(fields[pointField])});
        }
    }
    return mounts;
}

QList<Mount> read(const QString &root)
{
    QFile table(root + QStringLiteral("/proc/self/mountinfo"));
    return table.open(QIODevice::ReadOnly) ? parse(table.readAll()) : QList<Mount>();
}

} // namespace kruv::MountTable
