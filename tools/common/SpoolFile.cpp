// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/SpoolFile.h"

#include "common/TemporaryFiles.h"
#include "common/ToolError.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace kruv::tools {

namespace {

constexpr std::size_t memoryBytes = std::size_t(8) * 1024 * 1024;

[[noreturn]] void fail(const char *action)
{
    throw ToolError(std::string("cannot ") + action + " a temporary file: " + std::strerror(errno));
}

} // namespace

SpoolFile::SpoolFile(std::string folder)
    : m_folder(std::move(folder))
{
}

SpoolFile::~SpoolFile()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

std::string SpoolFile::temporaryFolder()
{
    const char *folder = std::getenv("TMPDIR");
    return folder && *folder ? folder : "/tmp";
}

void SpoolFile::openFile()
{
    m_descriptor = ::open(m_folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (m_descriptor >= 0) {
        return;
    }
    // Not every file system knows nameless files.
    std::string path = m_folder + "/.kruv-spool-XXXXXX";
    m_descriptor = TemporaryFiles::create(path);
    if (m_descriptor < 0) {
        fail("create");
    }
    ::unlink(path.c_str());
    TemporaryFiles::forget(path);
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
    m_size += bytes.size();
}

int SpoolFile::release()
{
    spill();
    return std::exchange(m_descriptor, -1);
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
