// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <cstdint>
#include <span>

namespace kruv {

/// An open file, closed with the object. Names are local paths whatever stands in them.
class FileDescriptor
{
public:
    /// Opens a regular file for reading; anything else (a pipe would block) is an AudioError.
    static FileDescriptor openForReading(const QString &path);
    /// Creates the file or erases what is in it; AudioError where that can't be done.
    static FileDescriptor create(const QString &path);

    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&) = delete;
    ~FileDescriptor();

    int get() const { return m_descriptor; }
    /// Hands the open descriptor over; the receiver closes it.
    int release();

    /// Up to `bytes.size()` bytes from the present position; 0 at the end, -errno on failure.
    std::int64_t read(std::span<std::uint8_t> bytes);
    /// As read(), from anywhere in the file and without moving the position.
    std::int64_t readAt(std::int64_t offset, std::span<std::uint8_t> bytes) const;
    /// Tells the system that the whole file will be read from here on.
    void readAhead() const;
    /// 0, or -errno when not all could be written.
    int write(std::span<const std::uint8_t> bytes);
    /// As lseek(), but -errno on failure.
    std::int64_t seek(std::int64_t offset, int whence);
    /// Bytes in the file, or -errno.
    std::int64_t size() const;
    /// Closes now; 0, or the -errno of a write that the system had put off.
    int close();

private:
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    int m_descriptor;
};

} // namespace kruv
