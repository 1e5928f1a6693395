// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kruv::adapters {

/// Owns a file descriptor.
class File
{
public:
    explicit File(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    File(File &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    File &operator=(File &&other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    ~File();

    int descriptor() const { return m_descriptor; }
    explicit operator bool() const { return m_descriptor >= 0; }
    void close();

private:
    int m_descriptor;
};

/// The first bytes of a file, at most `limit`; empty when it can't be read.
std::string readStart(const std::string &path, std::size_t limit);

/// Reads up to `size` bytes at `offset`; shorter at the end of the file or on an error.
std::string readAt(int descriptor, std::size_t size, long long offset);

/// Writes everything, across short writes and interruptions. False on failure, errno set.
bool writeAll(int descriptor, std::string_view bytes);

/// One line on standard error, with the program's name in front ("shntool: ...").
void complain(std::string_view program, std::string_view text);

bool fileExists(const std::string &path);
bool isFolder(const std::string &path);

} // namespace kruv::adapters
