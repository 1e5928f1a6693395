// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/SpoolFile.h"

#include "common/ToolError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

namespace kruv::tools {

namespace {

constexpr std::size_t memoryBytes = std::size_t(8) * 1024 * 1024;

[[noreturn]] void fail(const char *action)
{
    throw ToolError(std::string("cannot ") + action + " a temporary file: " + std::strerror(errno));
}

} // namespace

SpoolFile::~SpoolFile()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

void SpoolFile::openFile()
{
    const char *folder = std::getenv("TMPDIR");
    std::string path = std::string(folder && *folder ? folder : "/tmp") + "/kruv-XXXXXX";
    m_descriptor = ::mkostemp(path.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        fail("create");
    }
    ::unlink(path.c_str());
}

void SpoolFile::spill()
{
    if (m_descriptor < 0) {
        openFile();
    }
    for (std::size_t done = 0; done < m_memory.size();) {
        const ssize_t step = ::write(m_descriptor, m_memory.data() + done, m_memory.size() - done);
        if (step < 0 && errno == EINTR) {
            continue;
        }
        if (step <= 0) {
            fail("write");
        }
        done += static_cast<std::size_t>(step);
    }
    m_memory.clear();
}

void SpoolFile::write(std::span<const std::uint8_t> bytes)
{
    if (m_memory.size() + bytes.size() > memoryBytes) {
        spill();
    }
    m_memory.insert(m_memory.end(), bytes.begin(), bytes.end());
}

void SpoolFile::copyTo(ByteSink &sink)
{
    if (m_descriptor >= 0) {
        std::vector<std::uint8_t> block(std::size_t(256) * 1024);
        off_t offset = 0;
        for (;;) {
            const ssize_t got = ::pread(m_descriptor, block.data(), block.size(), offset);
            if (got < 0 && errno == EINTR) {
                continue;
            }
            if (got < 0) {
                fail("read");
            }
            if (got == 0) {
                break;
            }
            sink.write(std::span(block).first(static_cast<std::size_t>(got)));
            offset += got;
        }
    }
    sink.write(m_memory);
}

} // namespace kruv::tools
