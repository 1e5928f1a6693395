// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/FileDescriptor.h"

#include "audio/AudioError.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace kruv {

namespace {

QString systemText(int error)
{
    return QString::fromStdString(std::generic_category().message(error));
}

[[noreturn]] void cannot(const char *step, int error)
{
    const bool forbidden = error == EACCES || error == EPERM || error == EROFS;
    throw AudioError(
        QStringLiteral("%1 failed %2").arg(QLatin1String(step), QLatin1String(forbidden ? "prm?" : "wht?")),
        systemText(error));
}

} // namespace

FileDescriptor FileDescriptor::openForReading(const QString &path)
{
    constexpr const char *step = "ExtAudioFileOpenURL";
    // Not blocking: opening a pipe would wait for its writer.
    FileDescriptor file(open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status = {};
    if (file.m_descriptor < 0 || fstat(file.m_descriptor, &status) != 0) {
        cannot(step, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        cannot(step, S_ISDIR(status.st_mode) ? EISDIR : ESPIPE);
    }
    return file;
}

FileDescriptor FileDescriptor::create(const QString &path)
{
    FileDescriptor file(
        open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    if (file.m_descriptor < 0) {
        cannot("ExtAudioFileCreateWithURL", errno);
    }
    return file;
}

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_descriptor(other.release())
{
}

FileDescriptor::~FileDescriptor()
{
    close();
}

int FileDescriptor::release()
{
    return std::exchange(m_descriptor, -1);
}

std::int64_t FileDescriptor::read(std::span<std::uint8_t> bytes)
{
    for (;;) {
        const ssize_t got = ::read(m_descriptor, bytes.data(), bytes.size());
        if (got >= 0 || errno != EINTR) {
            return got >= 0 ? got : -errno;
        }
    }
}

std::int64_t FileDescriptor::readAt(std::int64_t offset, std::span<std::uint8_t> bytes) const
{
    for (;;) {
        const ssize_t got = ::pread(m_descriptor, bytes.data(), bytes.size(), offset);
        if (got >= 0 || errno != EINTR) {
            return got >= 0 ? got : -errno;
        }
    }
}

void FileDescriptor::readAhead() const
{
    posix_fadvise(m_descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
}

int FileDescriptor::write(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t done = ::write(m_descriptor, bytes.data(), bytes.size());
        if (done < 0 && errno != EINTR) {
            return -errno;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(done, 0)));
    }
    return 0;
}

std::int64_t FileDescriptor::seek(std::int64_t offset, int whence)
{
    const off_t position = lseek(m_descriptor, offset, whence);
    return position >= 0 ? position : -errno;
}

std::int64_t FileDescriptor::size() const
{
    struct stat status = {};
    return fstat(m_descriptor, &status) == 0 ? status.st_size : -errno;
}

int FileDescriptor::close()
{
    const int descriptor = release();
    return descriptor < 0 || ::close(descriptor) == 0 ? 0 : -errno;
}

} // namespace kruv
