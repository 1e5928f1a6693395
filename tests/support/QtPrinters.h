// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QStringList>

#include <ostream>

// GoogleTest finds these beside the types, so a failed comparison shows text instead of bytes.

inline void PrintTo(const QString &value, std::ostream *stream)
{
    *stream << QDebug::toString(value).toStdString();
}

inline void PrintTo(const QByteArray &value, std::ostream *stream)
{
    *stream << QDebug::toString(value).toStdString();
}

inline void PrintTo(const QStringList &value, std::ostream *stream)
{
    *stream << QDebug::toString(value).toStdString();
}
