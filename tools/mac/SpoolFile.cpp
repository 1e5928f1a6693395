// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpoolFile.h"

#include "MacError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace kruv::mac {

namespace {

int openNameless(const std::string &folder)
{
    const int descriptor = ::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor >= 0)
        return descriptor;
    // Not every file system knows nameless files.
    std::string path = folder + "/.kruv-spool-XXXXXX";
    const int named = ::mkostemp(path.data(), O_CLOEXEC);
    if (named >= 0)
        ::unlink(path.c_str());
    return named;
}

} // namespace

SpoolFile::SpoolFile(const std::string &folder)
    : m_descriptor(openNameless(folder))
{
    if (m_descriptor < 0)
        throw MacError(ErrorNumber::InvalidOutput,
                       "cannot create a temporary file in " + folder + ": " + std::strerror(errno));
}

SpoolFile::~SpoolFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

std::string SpoolFile::defaultFolder()
{
    const char *folder = std::getenv("TMPDIR");
    return folder && *folder ? folder : "/tmp";
}

void SpoolFile::write(std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        const ssize_t done = ::write(m_descriptor, bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR)
            continue;
        if (done <= 0)
            throw MacError(ErrorNumber::Write,
                           std::string("cannot write a temporary file: ") + std::strerror(errno));
        bytes = bytes.subspan(static_cast<std::size_t>(done));
        m_size += static_cast<uint64_t>(done);
    }
}

void SpoolFile::copyTo(tools::ByteSink &sink) const
{
    std::vector<uint8_t> piece(std::size_t{256} * 1024);
    uint64_t offset = 0;
    while (offset < m_size) {
        const ssize_t got = ::pread(m_descriptor, piece.data(), piece.size(), static_cast<off_t>(offset));
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            throw MacError(ErrorNumber::Read,
                           std::string("cannot read back a temporary file: ") + std::strerror(errno));
        sink.write(std::span<const uint8_t>(piece).first(static_cast<std::size_t>(got)));
        offset += static_cast<uint64_t>(got);
    }
}

int SpoolFile::release()
{
    return std::exchange(m_descriptor, -1);
}

} // namespace kruv::mac
