// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputWatch.h"

#include <QFile>

#include <sys/stat.h>

namespace kruv {

OutputWatch::OutputWatch(const QString &path)
    : m_path(path)
    , m_before(stampOf(path))
{
}

std::optional<OutputWatch::Stamp> OutputWatch::stampOf(const QString &path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return Stamp{status.st_dev, status.st_ino, status.st_size, status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
}

bool OutputWatch::written() const
{
    const std::optional<Stamp> now = stampOf(m_path);
    return now && now->size > 0 && now != m_before;
}

bool OutputWatch::isSameFile(const QString &first, const QString &second)
{
    const std::optional<Stamp> one = stampOf(first);
    const std::optional<Stamp> other = stampOf(second);
    return one && other && one->device == other->device && one->inode == other->inode;
}

} // namespace kruv
