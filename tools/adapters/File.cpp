// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "File.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kruv::adapters {

File::~File()
{
    close();
}

void File::close()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
        m_descriptor = -1;
    }
}

std::string readStart(const std::string &path, std::size_t limit)
{
    // A named pipe would block on opening; it holds nothing that may be read ahead.
    const File file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    return file ? readAt(file.descriptor(), limit, 0) : std::string();
}

std::string readAt(int descriptor, std::size_t size, long long offset)
{
    std::string bytes(size, '\0');
    std::size_t filled = 0;
    while (filled < size) {
        const auto count =
            pread(descriptor, bytes.data() + filled, size - filled, offset + static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

bool writeAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return false;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void complain(std::string_view program, std::string_view text)
{
    std::string line(program);
    line += ": ";
    line += text;
    line += '\n';
    writeAll(STDERR_FILENO, line);
}

bool fileExists(const std::string &path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0;
}

bool isFolder(const std::string &path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace kruv::adapters
