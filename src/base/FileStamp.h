// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace kruv {

/// What tells that a file was not touched between two looks: its size, the time of its last change, and,
/// where the file system keeps them, its number and the time when anything of it changed. FAT, exFAT and what
/// comes by way of FUSE give a file other ones whenever its caches are dropped.
struct FileStamp
{
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    std::uint64_t number = 0;
    std::int64_t touchedSeconds = 0;
    std::int64_t touchedNanoseconds = 0;

    bool operator==(const FileStamp &) const = default;
    /// Whether it has the content that it had, as far as that can be told: a new name, link or access right
    /// changes nothing of it.
    bool hasContentOf(const FileStamp &other) const
    {
        return size == other.size && seconds == other.seconds && nanoseconds == other.nanoseconds &&
               number == other.number;
    }

    /// Whether it got its name or its content no earlier than that, in milliseconds since 1970, by the time
    /// stamps of any file system. Outputs may have their sources' times, so that counts what came last.
    bool isNoOlderThan(std::int64_t milliseconds) const;

    /// Nothing for what is no regular file.
    static std::optional<FileStamp> of(const QString &path);

    /// True when both paths lead to the same file on disk, whatever the spelling or the links on the way.
    static bool isSameFile(const QString &first, const QString &second);
};

} // namespace kruv
