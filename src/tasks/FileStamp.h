// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace kruv {

/// What tells that a file was not touched between two looks: its size and the time of its last change.
/// Numbers of the file system take no part: some give a file another one whenever its caches are dropped.
struct FileStamp
{
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const FileStamp &) const = default;

    /// Nothing for what is no regular file.
    static std::optional<FileStamp> of(const QString &path);

    /// True when both paths lead to the same file on disk, whatever the spelling or the links on the way.
    static bool isSameFile(const QString &first, const QString &second);
};

} // namespace kruv
