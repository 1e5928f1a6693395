// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

class Preferences;

namespace Util {

/// Creates a new, empty file with a unique name "Kruv-<session>-<8 random characters>.<extension>" and
/// returns its path. An empty `folder` means the temporary folder. Throws std::invalid_argument without an
/// extension, std::runtime_error when the file can't be made.
QString generateTempFileName(const QString &folder, const QString &extension);

/// Where deleteFile() puts files.
bool deletesToTrash(const Preferences &preferences);
/// Moves the file to the trash when the preference `trashOrDelete` is non-zero, else removes it. An empty
/// text, or why it is still there, a clause for a person.
[[nodiscard]] QString deleteFile(const QString &path, const Preferences &preferences);

} // namespace Util
} // namespace kruv
