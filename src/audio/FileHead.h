// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/FileDescriptor.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace kruv {

/// Bytes of a file from anywhere in it, for those who look at what a file is. What lies beyond the end reads
/// as zeros, so that no caller has to ask.
class FileHead
{
public:
    explicit FileHead(FileDescriptor file);

    std::int64_t size() const { return m_size; }
    /// `count` bytes from `offset`, valid until the next call; negative offsets are beyond the end, too.
    std::span<const std::uint8_t> bytes(std::int64_t offset, std::size_t count);
    bool has(std::int64_t offset, std::string_view text);

    // Numbers of up to eight bytes.
    std::uint64_t bigEndian(std::int64_t offset, std::size_t count);
    std::uint64_t littleEndian(std::int64_t offset, std::size_t count);

private:
    FileDescriptor m_file;
    std::int64_t m_size;
    std::int64_t m_offset = 0; // of m_window in the file
    std::vector<std::uint8_t> m_window;
    std::vector<std::uint8_t> m_padded;
};

} // namespace kruv
