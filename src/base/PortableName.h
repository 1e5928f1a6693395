// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Names of files that other systems take, too. Nothing here touches the disk.
namespace kruv::PortableName {

/// One component of a path as FAT, exFAT and Windows take it: what they refuse in a name becomes "-" or "'",
/// points and blanks at its end go, and a name that stands for a device gets an underscore. Never empty.
QString of(const QString &name);
/// The same for each component of a relative path.
QString ofPath(const QString &path);

/// `name` and `ending`, the name cut between two characters so that both together are a name that file
/// systems take: of 255 bytes.
QString cut(const QString &name, const QString &ending);

} // namespace kruv::PortableName
