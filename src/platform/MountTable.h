// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// The mounted file systems, as the kernel lists them for this process.
namespace kruv::MountTable {

struct Mount
{
    QString source; ///< "/dev/sr0"; a word of the file system where it has no device
    QString point;
};

/// Reads `root`/proc/self/mountinfo; `root` is empty for the real system.
QList<Mount> read(const QString &root = {});
QList<Mount> parse(const QByteArray &mountinfo);

} // namespace kruv::MountTable
