// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

/// The step that gives a finished file its final name. All block.
namespace kruv::FileCommit {

/// What becomes of a file that has the name already.
enum class Existing {
    /// It stays, and the commit fails.
    Keep,
    /// The new file takes its place, in one step.
    Replace
};

struct Problem
{
    /// There is something of that name, be it only by another spelling on a volume that folds case.
    bool nameIsTaken = false;
    /// Why, for a person.
    QString text;
};

/// Whether anything has that name. A link that leads nowhere has its name as well.
bool isTaken(const QString &path);

/// Moves `staged` to `final`, which lies on the same file system. On failure the staged file is where it was,
/// and so is whatever has the name.
std::optional<Problem> commit(const QString &staged, const QString &final, Existing existing);

} // namespace kruv::FileCommit
