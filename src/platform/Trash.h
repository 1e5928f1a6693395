// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

namespace kruv {

/// Moves a file to the desktop's trash (freedesktop.org trash location). An empty text, or why it could not
/// be done, a clause for a person; the file is then where it was.
[[nodiscard]] QString moveToTrash(const QString &path);

/// Where the files lie that came into the trash from `path`.
QStringList trashedFrom(const QString &path);
/// Brings one of those back. The same texts; a file that is at `path` by now stays.
[[nodiscard]] QString restoreFromTrash(const QString &trashed, const QString &path);

} // namespace kruv
