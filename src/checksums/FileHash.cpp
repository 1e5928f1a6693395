// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "checksums/FileHash.h"

#include "base/HeldWork.h"
#include "base/SystemError.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace kruv {

namespace {

/// Fits a processor's second-level cache, so that the digest reads what was just copied there.
constexpr std::size_t pieceSize = std::size_t{256} * 1024;
/// How far the disk is kept ahead of the digest.
constexpr off_t readAhead = off_t{8} * 1024 * 1024;
constexpr off_t readAheadStep = off_t{1024} * 1024;

FileHash::Result failure(FileHash::Problem problem, const QString &message)
{
    return {QString(), problem, message};
}

FileHash::Result systemFailure(int error)
{
    const bool missing = error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP;
    return failure(missing ? FileHash::Problem::Missing : FileHash::Problem::Unreadable,
                   systemErrorText(error));
}

/// An open file that is read once from its start to its end.
class SequentialFile
{
public:
    explicit SequentialFile(const QByteArray &encodedPath)
        // Not blocking: a pipe without a writer would never open, and some special files never answer.
        : m_descriptor(open(encodedPath.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY))
    {
    }
    ~SequentialFile()
    {
        if (m_descriptor >= 0) {
            close(m_descriptor);
        }
    }
    SequentialFile(const SequentialFile &) = delete;
    SequentialFile &operator=(const SequentialFile &) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    bool isRegular()
    {
        struct stat status = {};
        if (fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
            return false;
        }
        m_size = status.st_size;
        posix_fadvise(m_descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
        return true;
    }

    /// Bytes read, 0 at the end, -1 with errno set on an error.
    ssize_t read(std::vector<char> &piece)
    {
        askAhead();
        ssize_t count = 0;
        do {
            count = ::read(m_descriptor, piece.data(), piece.size());
        } while (count < 0 && errno == EINTR);
        m_position += count > 0 ? count : 0;
        return count;
    }

    double share() const
    {
        return m_size > 0 ? std::min(1.0, static_cast<double>(m_position) / static_cast<double>(m_size))
                          : 1.0;
    }

private:
    void askAhead()
    {
        while (m_asked < m_size && m_asked < m_position + readAhead) {
            posix_fadvise(m_descriptor, m_asked, readAheadStep, POSIX_FADV_WILLNEED);
            m_asked += readAheadStep;
        }
    }

    const int m_descriptor;
    off_t m_size = 0;
    off_t m_position = 0;
    off_t m_asked = 0;
};

QString digestAt(const QString &path, FileHash::Algorithm algorithm)
{
    return FileHash::hashOfFileAtPath(QFile::encodeName(path), algorithm).digest;
}

} // namespace

QString FileHash::md5HashOfFileAtPath(const QString &path)
{
    return digestAt(path, Algorithm::MD5);
}

QString FileHash::sha1HashOfFileAtPath(const QString &path)
{
    return digestAt(path, Algorithm::SHA1);
}

QString FileHash::sha512HashOfFileAtPath(const QString &path)
{
    return digestAt(path, Algorithm::SHA512);
}

FileHash::Result FileHash::hashOfFileAtPath(const QByteArray &encodedPath, Algorithm algorithm,
                                            const Observer &observer)
{
    SequentialFile file(encodedPath);
    if (!file.isOpen()) {
        return systemFailure(errno);
    }
    if (!file.isRegular()) {
        return failure(Problem::NotAFile, tr("not a regular file"));
    }
    Digest digest(algorithm);
    if (!digest.isAvailable()) {
        return failure(Problem::Unreadable, tr("this digest is switched off on this system"));
    }
    thread_local std::vector<char> piece(pieceSize);
    ssize_t count = 0;
    while ((count = file.read(piece)) > 0) {
        HeldWork::wait();
        digest.add(std::as_bytes(std::span(piece).first(static_cast<std::size_t>(count))));
        if (observer && !observer(file.share())) {
            return failure(Problem::Stopped, QStringLiteral("stopped"));
        }
    }
    return count < 0 ? systemFailure(errno)
                     : Result{QString::fromLatin1(digest.result().toHex()), Problem::None, QString()};
}

} // namespace kruv
