// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

/// Files that the program has in memory before it writes them.
namespace kruv::WholeFile {

/// Replaces `path` by `bytes` and brings it to the disk: whole, or not at all. Returns an empty text, or why
/// it could not be done, for a person; the old file is then still there.
[[nodiscard]] QString write(const QString &path, const QByteArray &bytes);

} // namespace kruv::WholeFile
