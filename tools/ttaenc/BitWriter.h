// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::tools {
class ByteSink;
}

namespace kruv::ttaenc {

/// Writes coded frames, low bit first, each followed by its checksum.
class BitWriter
{
public:
    explicit BitWriter(tools::ByteSink &sink);

    /// Codes one frame of residuals, interleaved by channel. Returns the bytes it took, checksum included.
    std::uint32_t putFrame(std::span<const std::int32_t> residuals, unsigned channels);

private:
    template <unsigned Channels>
    void putResiduals(std::span<const std::int32_t> residuals, unsigned channels);
    void putLong(std::uint32_t ones, std::uint32_t low, unsigned lowBits);
    void put(std::uint64_t code, unsigned length);
    void flush();

    tools::ByteSink &m_sink;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_used = 0;   ///< whole bytes in m_buffer
    std::uint64_t m_bits = 0; ///< the bits behind them
    unsigned m_bitCount = 0;  ///< 0 to 7
    std::uint32_t m_checksum = 0;
    std::uint64_t m_frameBytes = 0;
};

} // namespace kruv::ttaenc
