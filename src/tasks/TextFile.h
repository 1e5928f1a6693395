// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Text files that the program writes itself.
namespace kruv::TextFile {

/// Replaces `path` by `text` as UTF-8, whole or not at all. False when it couldn't be written; the old file
/// is then still there.
bool write(const QString &path, const QString &text);

} // namespace kruv::TextFile
