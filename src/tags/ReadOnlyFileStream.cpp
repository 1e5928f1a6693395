// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/ReadOnlyFileStream.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kruv {

namespace {
constexpr long windowLength = long{16} * 1024;
}

ReadOnlyFileStream::ReadOnlyFileStream(const QString &path)
    : m_encodedPath(QFile::encodeName(path))
{
    // Opening a pipe must not wait for someone to write into it.
    const int descriptor = open(m_encodedPath.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status;
    if (descriptor < 0) {
        return;
    }
    if (fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        close(descriptor);
        return;
    }
    m_descriptor = descriptor;
    m_length = static_cast<long>(status.st_size);
}

ReadOnlyFileStream::~ReadOnlyFileStream()
{
    if (m_descriptor >= 0) {
        close(m_descriptor);
    }
}

long ReadOnlyFileStream::readAt(long offset, char *bytes, long count) const
{
    long done = 0;
    while (done < count) {
        const ssize_t got =
            pread(m_descriptor, bytes + done, static_cast<std::size_t>(count - done), offset + done);
        if (got > 0) {
            done += got;
        } else if (got == 0 || errno != EINTR) {
            break;
        }
    }
    return done;
}

const ReadOnlyFileStream::Window &ReadOnlyFileStream::windowAt(long offset)
{
    std::swap(m_windows[0], m_windows[1]);
    Window &window = m_windows[0];
    if (!window.bytes) {
        window.bytes = std::make_unique_for_overwrite<char[]>(windowLength);
    }
    // The library looks backwards from the end, so what lies before is of use there.
    window.start = std::max(0L, std::min(offset, m_length - windowLength));
    window.length = readAt(window.start, window.bytes.get(), std::min(windowLength, m_length - window.start));
    return window;
}

TagLib::ByteVector ReadOnlyFileStream::readBlock(unsigned long length)
{
    const long rest = std::max(0L, m_length - m_position);
    const long count = length < static_cast<unsigned long>(rest) ? static_cast<long>(length) : rest;
    if (!isOpen() || count == 0) {
        return {};
    }
    if (m_windows[1].holds(m_position, count)) {
        std::swap(m_windows[0], m_windows[1]);
    }
    if (count <= windowLength) {
        const Window &window = m_windows[0].holds(m_position, count) ? m_windows[0] : windowAt(m_position);
        const long available = std::clamp(window.start + window.length - m_position, 0L, count);
        TagLib::ByteVector block(window.bytes.get() + (m_position - window.start),
                                 static_cast<unsigned int>(available));
        m_position += available;
        return block;
    }
    TagLib::ByteVector block(static_cast<unsigned int>(count), '\0');
    const long done = readAt(m_position, block.data(), count);
    block.resize(static_cast<unsigned int>(done));
    m_position += done;
    return block;
}

void ReadOnlyFileStream::seek(long offset, Position origin)
{
    const long from = origin == Beginning ? 0 : origin == Current ? m_position : m_length;
    m_position = std::max(0L, from + offset);
}

} // namespace kruv
