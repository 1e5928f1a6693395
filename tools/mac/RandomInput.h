// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kruv::mac {

/// Bytes that can be read at any place: a file, standard input (copied to an unnamed temporary file when it
/// is a pipe), or memory. Failing reads throw MacError.
class RandomInput
{
public:
    /// Opens a file; "-" is standard input.
    explicit RandomInput(const std::string &path);
    /// Reads an open file, which becomes its own; name stands in messages.
    RandomInput(int descriptor, std::string name);
    /// Reads the given bytes, which must outlive the object.
    explicit RandomInput(std::span<const uint8_t> bytes);
    ~RandomInput();
    RandomInput(const RandomInput &) = delete;
    RandomInput &operator=(const RandomInput &) = delete;

    /// Fills destination as far as the input reaches; returns how many bytes that were.
    std::size_t readAt(uint64_t offset, std::span<uint8_t> destination) const;
    uint64_t size() const { return m_size; }
    /// True when path is the very file this reads.
    bool isFile(const std::string &path) const;
    const std::string &name() const { return m_name; }

private:
    void useDescriptor();
    void copyToFile();

    std::string m_name;
    int m_descriptor = -1;
    std::span<const uint8_t> m_bytes;
    uint64_t m_size = 0;
};

} // namespace kruv::mac
