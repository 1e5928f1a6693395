// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/FileStamp.h"

#include <QFile>

#include <sys/stat.h>

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

} // namespace

std::optional<FileStamp> FileStamp::of(const QString &path)
{
    const auto status = statusOf(path);
    return status ? std::optional(FileStamp{status->st_size, status->st_mtim.tv_sec, status->st_mtim.tv_nsec})
                  : std::nullopt;
}

bool FileStamp::isSameFile(const QString &first, const QString &second)
{
    const auto one = statusOf(first);
    const auto other = statusOf(second);
    return one && other && one->st_dev == other->st_dev && one->st_ino == other->st_ino;
}

} // namespace kruv
