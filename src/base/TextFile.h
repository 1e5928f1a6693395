// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <optional>

/// Text files that the program writes itself, and that people give it.
namespace kruv::TextFile {

/// Replaces `path` by `text` as UTF-8, whole or not at all. Returns an empty text, or why it could not be
/// done, for a person; the old file is then still there.
[[nodiscard]] QString write(const QString &path, const QString &text);

/// The text of a file in whatever encoding it is, its line breaks as they are. Nothing, with a line in the
/// log, where it can't be read or is no text of a size that a person writes (16 MiB).
std::optional<QString> read(const QString &path);

} // namespace kruv::TextFile
