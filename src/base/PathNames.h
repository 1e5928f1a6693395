// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Parts of a path as text; nothing here touches the disk.
namespace kruv::PathNames {

/// "/a/b.c.wav" gives "b.c.wav".
QString lastPathComponent(const QString &path);
/// The folder a path lies in; "/" for a path at the root.
QString folderOf(const QString &path);
/// What stands behind the last dot of the last component, case kept; empty for "name", "name." and ".name".
QString extension(const QString &path);
/// extension() in upper case: the file type.
QString fileType(const QString &path);
/// The last component less its extension.
QString nameWithoutExtension(const QString &path);
/// `folder` joined with the name of `source`, its extension replaced.
QString outputPath(const QString &folder, const QString &source, const QString &newExtension);
/// What stands between the last "d" of a path and the "t" behind it: the disc of "x d2t05.flac" is "2". The
/// whole path where it has neither.
QString disc(const QString &path);

} // namespace kruv::PathNames
