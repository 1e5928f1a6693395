// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/OutputWatch.h"

#include "base/PathNames.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

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

bool OutputWatch::reachedDisk() const
{
    const auto sync = [](const QString &path) {
        const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
        const bool done = descriptor >= 0 && fsync(descriptor) == 0;
        if (descriptor >= 0) {
            close(descriptor);
        }
        return done;
    };
    // Some file systems can't sync a folder; the file itself is what counts.
    const bool done = sync(m_path);
    sync(PathNames::folderOf(m_path));
    return done;
}

bool OutputWatch::isSameFile(const QString &first, const QString &second)
{
    const std::optional<Stamp> one = stampOf(first);
    const std::optional<Stamp> other = stampOf(second);
    return one && other && one->device == other->device && one->inode == other->inode;
}

} // namespace kruv
