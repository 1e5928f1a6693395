// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/InputStream.h"

#include "common/ToolError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kruv::tools {

namespace {

constexpr std::size_t headBytes = 4096; // all that is wanted of many files
constexpr std::size_t bufferBytes = std::size_t(128) * 1024;

} // namespace

InputStream::InputStream(const std::string &path)
    : m_name(path == "-" ? "standard input" : path)
    , m_buffer(headBytes)
{
    if (path == "-") {
        m_descriptor = STDIN_FILENO;
    } else {
        m_descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        if (m_descriptor < 0) {
            throw ToolError("cannot open " + m_name + ": " + std::strerror(errno));
        }
        m_ownsDescriptor = true;
    }
    findSize();
}

InputStream::InputStream(int descriptor, std::string name)
    : m_descriptor(descriptor)
    , m_ownsDescriptor(true)
    , m_name(std::move(name))
    , m_buffer(headBytes)
{
    findSize();
}

void InputStream::findSize()
{
    struct stat status = {};
    if (::fstat(m_descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        return;
    }
    const off_t start = ::lseek(m_descriptor, 0, SEEK_CUR);
    if (start >= 0) {
        m_size = static_cast<std::uint64_t>(std::max<off_t>(0, status.st_size - start));
    }
    ::posix_fadvise(m_descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
}

InputStream::InputStream(std::vector<std::uint8_t> bytes, std::string name)
    : m_name(std::move(name))
    , m_buffer(std::move(bytes))
    , m_end(m_buffer.size())
    , m_size(m_buffer.size())
{
}

InputStream::InputStream(std::function<std::size_t(std::span<std::uint8_t>)> source, std::string name)
    : m_source(std::move(source))
    , m_name(std::move(name))
    , m_buffer(headBytes)
{
}

InputStream::~InputStream()
{
    if (m_ownsDescriptor) {
        ::close(m_descriptor);
    }
}

bool InputStream::isFile(int descriptor, const std::string &path)
{
    struct stat own = {};
    struct stat other = {};
    return descriptor >= 0 && ::fstat(descriptor, &own) == 0 && S_ISREG(own.st_mode) &&
           ::stat(path.c_str(), &other) == 0 && own.st_dev == other.st_dev && own.st_ino == other.st_ino;
}

std::size_t InputStream::readMore(std::uint8_t *destination, std::size_t count)
{
    if (isMemory()) {
        return 0;
    }
    if (m_source) {
        return m_source({destination, count});
    }
    for (;;) {
        const ssize_t got = ::read(m_descriptor, destination, count);
        if (got >= 0) {
            return static_cast<std::size_t>(got);
        }
        if (errno != EINTR) {
            throw ToolError("cannot read " + m_name + ": " + std::strerror(errno));
        }
    }
}

void InputStream::fillBuffer()
{
    if (m_end > 0 && !isMemory()) {
        m_buffer.resize(bufferBytes);
    }
    m_begin = m_end = 0;
    m_end = readMore(m_buffer.data(), m_buffer.size());
}

std::size_t InputStream::read(std::span<std::uint8_t> destination)
{
    std::size_t done = 0;
    while (done < destination.size()) {
        if (buffered() == 0) {
            fillBuffer();
        }
        const std::size_t step = std::min(buffered(), destination.size() - done);
        if (step == 0) {
            break;
        }
        std::memcpy(destination.data() + done, m_buffer.data() + m_begin, step);
        m_begin += step;
        done += step;
    }
    m_position += done;
    return done;
}

void InputStream::readExactly(std::span<std::uint8_t> destination, const char *what)
{
    if (read(destination) != destination.size()) {
        throw ToolError(m_name + " ends within " + what);
    }
}

std::span<const std::uint8_t> InputStream::peek(std::size_t count)
{
    if (buffered() < count && !isMemory()) {
        std::memmove(m_buffer.data(), m_buffer.data() + m_begin, buffered());
        m_end -= std::exchange(m_begin, 0);
        while (m_end < count) {
            const std::size_t got = readMore(m_buffer.data() + m_end, m_buffer.size() - m_end);
            if (got == 0) {
                break;
            }
            m_end += got;
        }
    }
    return std::span<const std::uint8_t>(m_buffer).subspan(m_begin, std::min(count, buffered()));
}

std::span<const std::uint8_t> InputStream::readBlock()
{
    if (buffered() == 0) {
        fillBuffer();
    }
    const auto block = std::span<const std::uint8_t>(m_buffer).subspan(m_begin, buffered());
    m_begin = m_end;
    m_position += block.size();
    return block;
}

std::uint64_t InputStream::skip(std::uint64_t count)
{
    std::uint64_t done = 0;
    while (done < count) {
        if (buffered() == 0) {
            fillBuffer();
        }
        const auto step = static_cast<std::size_t>(std::min<std::uint64_t>(buffered(), count - done));
        if (step == 0) {
            break;
        }
        m_begin += step;
        done += step;
    }
    m_position += done;
    return done;
}

} // namespace kruv::tools
