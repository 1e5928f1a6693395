// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/OutputFile.h"

#include "common/TemporaryFiles.h"
#include "common/ToolError.h"

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace kruv::tools {

namespace {

constexpr std::size_t bufferBytes = std::size_t(256) * 1024;

std::string folderOf(const std::string &path)
{
    const auto slash = path.rfind('/');
    return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

// A link is followed, so that it stays a link and its target is replaced, as with a plain open().
std::string resolved(const std::string &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? std::string(real.get()) : path;
}

void writeAll(int descriptor, std::span<const std::uint8_t> bytes, bool &failed)
{
    while (!bytes.empty()) {
        const ssize_t done = ::write(descriptor, bytes.data(), bytes.size());
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done <= 0) {
            if (done == 0) {
                errno = ENOSPC;
            }
            failed = true;
            return;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(done));
    }
}

mode_t defaultMode()
{
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
}

} // namespace

OutputFile::OutputFile(const std::string &path)
    : m_finalPath(path)
{
    // A reader that goes away is reported by the write, with a message, not by a silent death.
    std::signal(SIGPIPE, SIG_IGN);
    m_buffer.reserve(bufferBytes);
    if (path == "-") {
        m_finalPath = "standard output";
        m_descriptor = STDOUT_FILENO;
        return;
    }
    struct stat status = {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        openDirectly();
    } else {
        openTemporary();
    }
}

OutputFile::~OutputFile()
{
    // After an error a reader on a pipe still gets what was made before it.
    if (m_descriptor >= 0 && m_temporaryPath.empty()) {
        bool ignored = false;
        writeAll(m_descriptor, m_buffer, ignored);
    }
    if (m_descriptor > STDOUT_FILENO) {
        ::close(m_descriptor);
    }
    if (!m_temporaryPath.empty()) {
        ::unlink(m_temporaryPath.c_str());
        TemporaryFiles::forget(m_temporaryPath);
    }
}

void OutputFile::openDirectly()
{
    m_descriptor = ::open(m_finalPath.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_descriptor < 0) {
        fail("open");
    }
}

void OutputFile::openTemporary()
{
    m_finalPath = resolved(m_finalPath);
    struct stat status = {};
    const bool exists = ::stat(m_finalPath.c_str(), &status) == 0;
    if (exists && ::access(m_finalPath.c_str(), W_OK) != 0) {
        fail("write");
    }
    m_temporaryPath = folderOf(m_finalPath) + ".kruv-XXXXXX";
    m_descriptor = TemporaryFiles::create(m_temporaryPath);
    if (m_descriptor < 0) {
        fail("create");
    }
    // So far the file is private; the finished one has the rights a plain open() would give or had
    // given. File systems without rights refuse this, which does no harm.
    [[maybe_unused]] const int ignored =
        ::fchmod(m_descriptor, exists ? status.st_mode & 07777 : defaultMode());
}

void OutputFile::fail(const char *action) const
{
    throw ToolError(std::string("cannot ") + action + " " + m_finalPath + ": " + std::strerror(errno));
}

void OutputFile::write(std::span<const std::uint8_t> bytes)
{
    m_position += bytes.size();
    if (m_buffer.size() + bytes.size() > bufferBytes) {
        flush();
    }
    if (bytes.size() < bufferBytes) {
        m_buffer.insert(m_buffer.end(), bytes.begin(), bytes.end());
        return;
    }
    bool failed = false;
    writeAll(m_descriptor, bytes, failed);
    if (failed) {
        fail("write");
    }
}

void OutputFile::flush()
{
    bool failed = false;
    writeAll(m_descriptor, m_buffer, failed);
    m_buffer.clear();
    if (failed) {
        fail("write");
    }
}

void OutputFile::rewrite(std::uint64_t offset, std::span<const std::uint8_t> bytes)
{
    flush();
    while (!bytes.empty()) {
        const ssize_t done = ::pwrite(m_descriptor, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (done < 0 && errno == EINTR) {
            continue;
        }
        if (done <= 0) {
            fail("write");
        }
        offset += static_cast<std::uint64_t>(done);
        bytes = bytes.subspan(static_cast<std::size_t>(done));
    }
}

void OutputFile::close()
{
    // Some file systems report a full disk only here.
    if (::close(std::exchange(m_descriptor, -1)) != 0 && errno != EINTR) {
        fail("write");
    }
}

void OutputFile::commit()
{
    flush();
    close();
    if (m_temporaryPath.empty()) {
        return;
    }
    if (::rename(m_temporaryPath.c_str(), m_finalPath.c_str()) != 0) {
        fail("rename the finished file to");
    }
    TemporaryFiles::forget(m_temporaryPath);
    m_temporaryPath.clear();
}

} // namespace kruv::tools
