// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

class QString;

namespace kruv {

/// Moves a file to the desktop's trash (freedesktop.org trash location). False when it stayed where it was.
bool moveToTrash(const QString &path);

} // namespace kruv
