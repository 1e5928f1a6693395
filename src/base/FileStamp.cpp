// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "base/FileStamp.h"

#include <QFile>

#include <algorithm>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace kruv {

namespace {

std::optional<struct stat> statusOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return status;
}

bool keepsNumbers(const QString &path)
{
    struct statfs volume = {};
    return statfs(QFile::encodeName(path).constData(), &volume) == 0 && volume.f_type != MSDOS_SUPER_MAGIC &&
           volume.f_type != EXFAT_SUPER_MAGIC && volume.f_type != FUSE_SUPER_MAGIC;
}

} // namespace

bool FileStamp::isNoOlderThan(std::int64_t milliseconds) const
{
    constexpr std::int64_t coarsest = 2; // seconds, the time stamps of FAT
    constexpr std::int64_t inOneSecond = 1000;
    return std::max(touchedSeconds, seconds) >= milliseconds / inOneSecond - coarsest;
}

std::optional<FileStamp> FileStamp::of(const QString &path)
{
    const auto status = statusOf(path);
    if (!status) {
        return std::nullopt;
    }
    FileStamp stamp{
        .size = status->st_size, .seconds = status->st_mtim.tv_sec, .nanoseconds = status->st_mtim.tv_nsec};
    if (keepsNumbers(path)) {
        stamp.number = status->st_ino;
        stamp.touchedSeconds = status->st_ctim.tv_sec;
        stamp.touchedNanoseconds = status->st_ctim.tv_nsec;
    }
    return stamp;
}

bool FileStamp::isSameFile(const QString &first, const QString &second)
{
    const auto one = statusOf(first);
    const auto other = statusOf(second);
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

} // namespace kruv
