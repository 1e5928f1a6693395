// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

/// The files that a cue sheet names.
namespace kruv::CueFileNames {

/// The name that a file has now, as it stands in a sheet; null where it has the same as before.
using NewName = std::function<QString(const QString &name)>;

/// A sheet whose FILE lines have the new names. Every other byte is as it was, and so are encoding and line
/// ends. Names that the sheet's encoding can't hold stay as well.
QByteArray renamed(const QByteArray &sheet, const NewName &newName);

} // namespace kruv::CueFileNames
