// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/BitWriter.h"

#include "common/ByteSink.h"
#include "common/Crc32.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"
#include "ttaenc/RiceState.h"
#include "ttaenc/StreamHeader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace kruv::ttaenc {

namespace {

constexpr std::size_t writeBufferBytes = std::size_t(64) * 1024;
// A put stores a whole word, of which at most the first seven bytes count.
constexpr std::size_t slackBytes = 16;
constexpr unsigned longestPut = 56;

void storeLowFirst(std::uint8_t *bytes, std::uint64_t word)
{
    if (std::endian::native == std::endian::big) {
        word = __builtin_bswap64(word);
    }
    std::memcpy(bytes, &word, sizeof word);
}

// Positive numbers become the odd ones: 0, 1, -1, 2, -2 are 0, 1, 2, 3, 4.
std::uint32_t withoutSign(std::int32_t value)
{
    const std::uint32_t twice = static_cast<std::uint32_t>(value) << 1;
    return value > 0 ? twice - 1 : 0 - twice;
}

} // namespace

BitWriter::BitWriter(tools::ByteSink &sink)
    : m_sink(sink)
    , m_buffer(writeBufferBytes + slackBytes)
{
}

// length is 1 to longestPut.
inline void BitWriter::put(std::uint64_t code, unsigned length)
{
    m_bits |= code << m_bitCount;
    m_bitCount += length;
    storeLowFirst(m_buffer.data() + m_used, m_bits);
    m_used += m_bitCount / 8;
    m_bits >>= m_bitCount & ~7u;
    m_bitCount %= 8;
}

void BitWriter::flush()
{
    const auto bytes = std::span(m_buffer).first(m_used);
    m_checksum = tools::crc32(bytes, m_checksum);
    m_sink.write(bytes);
    m_frameBytes += m_used;
    m_used = 0;
}

void BitWriter::putLong(std::uint32_t ones, std::uint32_t low, unsigned lowBits)
{
    constexpr unsigned step = 32;
    for (; ones >= step; ones -= step) {
        put(0xFFFFFFFF, step);
        if (m_used >= writeBufferBytes - sizeof(std::uint64_t)) {
            flush();
        }
    }
    put((std::uint64_t(1) << ones) - 1, ones + 1);
    if (lowBits > 0) {
        put(low, lowBits);
    }
}

template <unsigned Channels>
void BitWriter::putResiduals(std::span<const std::int32_t> residuals, unsigned channels)
{
    std::array<ChannelRice, Channels> states;
    const unsigned count = Channels <= 2 ? Channels : channels;
    for (std::size_t i = 0; i < residuals.size(); i += count) {
        if (m_used >= writeBufferBytes / 2) {
            flush();
        }
        for (unsigned c = 0; c < count; ++c) {
            ChannelRice &state = states[c];
            std::uint32_t value = withoutSign(residuals[i + c]);
            unsigned lowBits = state.all.width;
            std::uint32_t ones = 0;
            state.all.adapt(value);
            if (value >> lowBits != 0) {
                // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): a width is 0 to 27
                value -= 1u << lowBits;
                lowBits = state.large.width;
                state.large.adapt(value);
                ones = 1 + (value >> lowBits);
            }
            // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult): a width is 0 to 27
            const std::uint64_t low = value & ((std::uint64_t(1) << lowBits) - 1);
            if (ones + 1 + lowBits <= longestPut) {
                put(((std::uint64_t(1) << ones) - 1) | low << (ones + 1), ones + 1 + lowBits);
            } else {
                putLong(ones, static_cast<std::uint32_t>(low), lowBits);
            }
        }
    }
}

std::uint32_t BitWriter::putFrame(std::span<const std::int32_t> residuals, unsigned channels)
{
    m_checksum = 0;
    m_frameBytes = 0;
    if (channels == 1) {
        putResiduals<1>(residuals, channels);
    } else if (channels == 2) {
        putResiduals<2>(residuals, channels);
    } else {
        putResiduals<StreamHeader::largestChannels>(residuals, channels);
    }
    if (m_bitCount > 0) {
        put(0, 8 - m_bitCount);
    }
    flush();
    std::array<std::uint8_t, 4> checksum = {};
    tools::writeLe32(checksum.data(), m_checksum);
    m_sink.write(checksum);
    if (m_frameBytes > 0xFFFFFFFF - checksum.size()) {
        throw tools::ToolError("a frame is too large for a TTA file");
    }
    return static_cast<std::uint32_t>(m_frameBytes + checksum.size());
}

} // namespace kruv::ttaenc
