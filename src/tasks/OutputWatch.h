// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace kruv {

/// Tells whether a file was written since the watch began, by comparing what the file system says of it
/// before and after. Stands between a finished job and the deletion of its original.
class OutputWatch
{
public:
    OutputWatch() = default;
    /// Remembers how `path` looks now; it may not exist yet.
    explicit OutputWatch(const QString &path);

    /// True when the file exists, is not empty, and is not the one that was there when the watch began.
    bool written() const;
    /// True when a file was there when the watch began.
    bool existedBefore() const { return m_before.has_value(); }

    /// Has the file system bring the file and its name to the disk, so that a power cut can't take them back.
    /// False when it reports an error. Blocks.
    bool reachedDisk() const;

    /// True when both paths lead to the same file on disk, whatever the spelling or the links on the way.
    static bool isSameFile(const QString &first, const QString &second);

private:
    struct Stamp
    {
        std::uint64_t device = 0;
        std::uint64_t inode = 0;
        std::int64_t size = 0;
        std::int64_t changedSeconds = 0;
        std::int64_t changedNanoseconds = 0;
        bool operator==(const Stamp &) const = default;
    };
    static std::optional<Stamp> stampOf(const QString &path);

    QString m_path;
    std::optional<Stamp> m_before;
};

} // namespace kruv
