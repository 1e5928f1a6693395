// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "RandomInput.h"

#include "MacError.h"
#include "common/InputStream.h"
#include "common/SpoolFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kruv::mac {

RandomInput::RandomInput(const std::string &path)
    : m_name(path == "-" ? "standard input" : path)
{
    m_descriptor =
        path == "-" ? ::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 3) : ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (m_descriptor < 0) {
        throw MacError(ErrorNumber::InvalidInput, "cannot open " + m_name + ": " + std::strerror(errno));
    }
    useDescriptor();
}

RandomInput::RandomInput(int descriptor, std::string name)
    : m_name(std::move(name))
    , m_descriptor(descriptor)
{
    useDescriptor();
}

RandomInput::RandomInput(std::span<const uint8_t> bytes)
    : m_name("memory")
    , m_bytes(bytes)
    , m_size(bytes.size())
{
}

RandomInput::~RandomInput()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

void RandomInput::useDescriptor()
{
    struct stat status = {};
    if (::fstat(m_descriptor, &status) == 0 && S_ISREG(status.st_mode)) {
        m_size = static_cast<uint64_t>(status.st_size);
        ::posix_fadvise(m_descriptor, 0, 0, POSIX_FADV_SEQUENTIAL);
        return;
    }
    numbered(ErrorNumber::Write, [this] { copyToFile(); });
}

void RandomInput::copyToFile()
{
    tools::SpoolFile copy;
    std::vector<uint8_t> piece(std::size_t{64} * 1024);
    for (;;) {
        const ssize_t got = ::read(m_descriptor, piece.data(), piece.size());
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            throw MacError(ErrorNumber::Read, "cannot read " + m_name + ": " + std::strerror(errno));
        }
        if (got == 0) {
            break;
        }
        copy.write(std::span<const uint8_t>(piece).first(static_cast<std::size_t>(got)));
    }
    m_size = copy.size();
    ::close(m_descriptor);
    m_descriptor = copy.release();
}

bool RandomInput::isFile(const std::string &path) const
{
    return tools::InputStream::isFile(m_descriptor, path);
}

std::size_t RandomInput::readAt(uint64_t offset, std::span<uint8_t> destination) const
{
    if (offset >= m_size) {
        return 0;
    }
    destination =
        destination.first(static_cast<std::size_t>(std::min<uint64_t>(destination.size(), m_size - offset)));
    if (m_descriptor < 0) {
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), destination.size(),
                    destination.begin());
        return destination.size();
    }
    std::size_t done = 0;
    while (done < destination.size()) {
        const ssize_t got = ::pread(m_descriptor, destination.data() + done, destination.size() - done,
                                    static_cast<off_t>(offset + done));
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            throw MacError(ErrorNumber::Read, "cannot read " + m_name + ": " + std::strerror(errno));
        }
        if (got == 0) {
            break;
        }
        done += static_cast<std::size_t>(got);
    }
    return done;
}

} // namespace kruv::mac
