// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Names of files that some file systems take for one: FAT, exFAT, folders of ext4 that fold case, shares of
/// servers.
namespace kruv::FoldedNames {

/// The same for names that differ in no more than capitals, the normal form of Unicode, characters that can't
/// be seen, and points at the end: more than any one file system folds.
QString key(const QString &name);

/// Whether the file system that `folder` lies on takes these names for one. Tries them in a folder of its
/// own, or above it where it is not there yet, and believes it where nothing can be tried. Blocks.
bool areOne(const QString &folder, const QString &first, const QString &second);

} // namespace kruv::FoldedNames
