// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <stdexcept>

/// Gives the files of a list one prefix and their number, all of them or none.
namespace kruv::BatchRename {

struct Move
{
    QString from;
    QString to;
    bool operator==(const Move &) const = default;
};

/// Why nothing was renamed, in words for a person.
class Refused : public std::runtime_error
{
public:
    explicit Refused(const QString &reason)
        : std::runtime_error(reason.toStdString())
    {
    }
};

/// Where each file goes: its folder, the prefix, its place in the list from 01, its own extension. Touches
/// nothing.
QList<Move> plan(const QStringList &files, const QString &prefix);

/// Throws Refused when a new name is taken or a file is gone.
void requirePossible(const QList<Move> &moves);

/// Carries possible moves out. Never replaces a file. Throws Refused when a move fails, after taking the
/// earlier ones back. Each move is one
/// step of the file system: a program that is killed leaves every file whole, under its old or its new name.
void carryOut(const QList<Move> &moves);

} // namespace kruv::BatchRename
