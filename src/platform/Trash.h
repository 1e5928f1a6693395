// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// Moves a file to the desktop's trash (freedesktop.org trash location). An empty text, or why it could not
/// be done, a clause for a person; the file is then where it was.
[[nodiscard]] QString moveToTrash(const QString &path);

} // namespace kruv
