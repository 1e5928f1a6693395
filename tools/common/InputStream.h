// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kruv::tools {

/// A forward-only, buffered input: a file, standard input, bytes in memory, or what a function gives. Every
/// failing read throws ToolError.
class InputStream
{
public:
    /// Opens a file; "-" is standard input, which starts at its present position.
    explicit InputStream(const std::string &path);
    /// Reads and finally closes an open descriptor, of a pipe for example; name stands in messages.
    InputStream(int descriptor, std::string name);
    /// Reads the given bytes; name stands in messages.
    InputStream(std::vector<std::uint8_t> bytes, std::string name);
    /// Reads what a function gives, which fills as much as it can and gives 0 at the end.
    InputStream(std::function<std::size_t(std::span<std::uint8_t>)> source, std::string name);
    ~InputStream();
    InputStream(const InputStream &) = delete;
    InputStream &operator=(const InputStream &) = delete;

    /// Fills destination; a smaller result means the end of input.
    std::size_t read(std::span<std::uint8_t> destination);
    /// As read(), but fewer bytes than wanted are an error that says what was being read.
    void readExactly(std::span<std::uint8_t> destination, const char *what);
    /// The next bytes without consuming them: count (at most 4096) or what is left.
    /// Valid until the next call of any reading member.
    std::span<const std::uint8_t> peek(std::size_t count);
    /// Whatever can be had at once, at least one byte; empty at the end. Valid until the next reading call.
    std::span<const std::uint8_t> readBlock();
    /// Skips up to count bytes; returns how many there were.
    std::uint64_t skip(std::uint64_t count);

    /// Bytes consumed since the start.
    std::uint64_t position() const { return m_position; }
    /// Length of the whole input in bytes where it is known beforehand (a regular file or memory).
    std::optional<std::uint64_t> size() const { return m_size; }
    /// True when path is the very file this reads.
    bool isFile(const std::string &path) const { return isFile(m_descriptor, path); }
    /// True when path is the regular file behind an open descriptor.
    static bool isFile(int descriptor, const std::string &path);
    /// For messages: the path or "standard input".
    const std::string &name() const { return m_name; }

private:
    void findSize();
    void fillBuffer();
    bool isMemory() const { return m_descriptor < 0 && !m_source; }
    std::size_t readMore(std::uint8_t *destination, std::size_t count);
    std::size_t buffered() const { return m_end - m_begin; }

    int m_descriptor = -1;
    bool m_ownsDescriptor = false;
    std::function<std::size_t(std::span<std::uint8_t>)> m_source;
    std::string m_name;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    std::uint64_t m_position = 0;
    std::optional<std::uint64_t> m_size;
};

} // namespace kruv::tools
