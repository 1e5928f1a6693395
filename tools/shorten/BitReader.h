// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::tools {
class InputStream;
}

namespace kruv::shorten {

/// Reads Shorten's codes, high bit first. The end of input within a code throws ToolError.
class BitReader
{
public:
    /// Takes the input from its present position on; the stream must outlive the reader.
    explicit BitReader(tools::InputStream &input);

    /// A Rice code with k low bits, k at most 31.
    std::uint32_t readUnsigned(unsigned k);
    /// A Rice code with k + 1 low bits, the lowest of which is the sign.
    std::int32_t readSigned(unsigned k);
    /// A number that states its own width.
    std::uint32_t readLong();
    /// As many readSigned(k) as destination holds.
    void readSigned(unsigned k, std::span<std::int32_t> destination);

private:
    void refill();
    std::uint64_t window() const;
    std::uint64_t readRice(unsigned lowBits);
    std::size_t readSignedFast(unsigned lowBits, std::span<std::int32_t> destination);

    tools::InputStream &m_input;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_validBytes = 0;
    std::size_t m_bitPosition = 0; ///< of the next bit in m_buffer
    bool m_inputEnded = false;
};

} // namespace kruv::shorten
