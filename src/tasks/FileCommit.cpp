// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tasks/FileCommit.h"

#include "base/SystemError.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv::FileCommit {

namespace {

bool isUnsupported(int error)
{
    return error == EINVAL || error == ENOSYS || error == EOPNOTSUPP;
}

/// For file systems without links: the name is taken first, and then given to the staged file.
int takeNameAndRename(const char *staged, const char *final)
{
    const int taken = open(final, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (taken < 0) {
        return errno;
    }
    close(taken);
    if (std::rename(staged, final) == 0) {
        return 0;
    }
    const int error = errno;
    unlink(final);
    return error;
}

/// 0 or the error number.
int renameIntoFreePlace(const char *staged, const char *final)
{
    if (renameat2(AT_FDCWD, staged, AT_FDCWD, final, RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (!isUnsupported(errno)) {
        return errno;
    }
    // Network file systems and others by way of FUSE can't look and rename in one step, but link.
    if (link(staged, final) == 0) {
        unlink(staged);
        return 0;
    }
    return errno == EPERM || errno == EOPNOTSUPP ? takeNameAndRename(staged, final) : errno;
}

/// A server refuses to replace a file that is open somewhere, often for a moment only.
int renameOver(const char *staged, const char *final)
{
    constexpr int tries = 5;
    constexpr unsigned apart = 500'000; // microseconds
    for (int attempt = 1; std::rename(staged, final) != 0; ++attempt) {
        const int error = errno;
        if (error != EACCES || access(final, W_OK) != 0 || attempt == tries) {
            return error;
        }
        usleep(apart);
    }
    return 0;
}

} // namespace

bool isTaken(const QString &path)
{
    struct stat status = {};
    return lstat(QFile::encodeName(path).constData(), &status) == 0;
}

std::optional<Problem> commit(const QString &staged, const QString &final, Existing existing)
{
    const QByteArray from = QFile::encodeName(staged);
    const QByteArray to = QFile::encodeName(final);
    const int error = existing == Existing::Replace ? renameOver(from.constData(), to.constData())
                                                    : renameIntoFreePlace(from.constData(), to.constData());
    if (error == 0) {
        return std::nullopt;
    }
    return Problem{error == EEXIST, systemErrorText(error)};
}

} // namespace kruv::FileCommit
