// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Gives files their final names, also across file systems. An empty text is returned on success, else what
/// went wrong; the file is then still where it was, and what was at the new place is untouched.
namespace kruv::FileMove {

/// What is at `to` is replaced.
QString replace(const QString &from, const QString &to);
/// Fails when there is something at `to`, a dangling link too.
QString intoFreePlace(const QString &from, const QString &to);

} // namespace kruv::FileMove
