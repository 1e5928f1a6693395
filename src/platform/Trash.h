// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace kruv {

/// Moves a file to the desktop's trash (freedesktop.org trash location). An empty text, or why it could not
/// be done, a clause for a person; the file is then where it was.
[[nodiscard]] QString moveToTrash(const QString &path);

/// Brings a file back that lies in the trash. The same texts; a file that is at `path` by now stays.
[[nodiscard]] QString restoreFromTrash(const QString &trashed, const QString &path);

/// Where files lie that came into the trash. It looks through each trash once. One thread at a time.
class TrashListing
{
public:
    /// Those that came from `path`.
    QStringList from(const QString &path);

private:
    const QStringList &namesIn(const QString &trash);

    QHash<QString, QStringList> m_names; // by trash, in ascending order
};

} // namespace kruv
