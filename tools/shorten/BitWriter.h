// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::tools {
class ByteSink;
}

namespace kruv::shorten {

/// Writes Shorten's codes, high bit first. Failures of the sink pass through.
class BitWriter
{
public:
    explicit BitWriter(tools::ByteSink &sink);

    /// A Rice code of value with k low bits, k at most 31.
    void putUnsigned(std::uint32_t value, unsigned k);
    /// A Rice code with k + 1 low bits, the lowest of which is the sign.
    void putSigned(std::int32_t value, unsigned k);
    /// A number that states its own width.
    void putLong(std::uint32_t value);
    /// putSigned(value, k) for each value.
    void putSigned(std::span<const std::int32_t> values, unsigned k);
    /// Fills up to a whole 32-bit word with a one and zeros, as classic readers want it, and empties the
    /// buffer.
    void finish();

private:
    void putRice(std::uint32_t value, unsigned lowBits);
    void put(std::uint64_t code, unsigned length);
    void flush();

    tools::ByteSink &m_sink;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_used = 0;   ///< whole bytes in m_buffer
    std::uint64_t m_bits = 0; ///< the lowest m_bitCount bits are not in m_buffer as whole bytes
    unsigned m_bitCount = 0;  ///< 0 to 7
    std::uint64_t m_bytesFlushed = 0;
};

} // namespace kruv::shorten
