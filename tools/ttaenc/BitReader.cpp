// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/BitReader.h"

#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"
#include "ttaenc/FrameDamage.h"
#include "ttaenc/RiceState.h"
#include "ttaenc/StreamHeader.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace kruv::ttaenc {

namespace {

constexpr std::size_t readBufferBytes = std::size_t(64) * 1024;
// Room behind the valid bytes: the end is looked for once a step, so that the codes of all channels may pass
// it.
constexpr std::size_t paddingBytes = 128;
// A refill leaves at least this much ahead, unless the input ends: enough for one step of every channel.
constexpr std::size_t aheadBytes = 256;
// Bits of window() that are real wherever the window begins within its first byte.
constexpr unsigned windowBits = 57;
constexpr unsigned widestLow = 31;
constexpr std::size_t checksumBytes = 4;

std::uint64_t loadLowFirst(const std::uint8_t *bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::big ? __builtin_bswap64(word) : word;
}

std::int32_t withSign(std::uint32_t value)
{
    const std::uint32_t half = value >> 1;
    return static_cast<std::int32_t>((value & 1) ? half + 1 : 0 - half);
}

} // namespace

BitReader::BitReader(tools::InputStream &input)
    : m_input(input)
    , m_buffer(readBufferBytes + paddingBytes)
{
}

std::uint64_t BitReader::window() const
{
    return loadLowFirst(m_buffer.data() + m_bitPosition / 8) >> (m_bitPosition % 8);
}

void BitReader::addToChecksum(std::size_t end)
{
    if (end > m_checkedBytes) {
        m_checksum =
            tools::crc32(std::span(m_buffer).subspan(m_checkedBytes, end - m_checkedBytes), m_checksum);
    }
    m_checkedBytes = std::max(m_checkedBytes, end);
}

void BitReader::refill()
{
    const std::size_t consumed = std::min(m_bitPosition / 8, m_validBytes);
    if (m_inputEnded || m_validBytes >= consumed + aheadBytes) {
        return;
    }
    addToChecksum(consumed);
    const std::size_t kept = m_validBytes - consumed;
    std::memmove(m_buffer.data(), m_buffer.data() + consumed, kept);
    m_bitPosition -= consumed * 8;
    m_checkedBytes -= consumed;
    m_bufferOffset += consumed;
    m_validBytes = kept + m_input.read(std::span(m_buffer).subspan(kept, readBufferBytes - kept));
    m_inputEnded = m_validBytes < readBufferBytes;
    std::memset(m_buffer.data() + m_validBytes, 0, paddingBytes);
}

void BitReader::checkEnd() const
{
    const std::uint64_t position = m_bufferOffset * 8 + m_bitPosition;
    if (m_frameEnd && position > *m_frameEnd * 8) {
        throw FrameDamage("its codes go beyond its end");
    }
    if (m_bitPosition > m_validBytes * 8) {
        throw tools::ToolError(m_input.name() + " ends too early");
    }
}

std::uint32_t BitReader::readOnes()
{
    std::uint64_t count = 0;
    for (;;) {
        checkEnd();
        refill();
        const auto ones = static_cast<unsigned>(std::countr_one(window()));
        count += std::min(ones, windowBits);
        m_bitPosition += std::min(ones + 1, windowBits);
        if (ones < windowBits) {
            checkEnd();
            return static_cast<std::uint32_t>(std::min<std::uint64_t>(count, 0xFFFFFFFF));
        }
    }
}

std::uint32_t BitReader::readValue(ChannelRice &state)
{
    const std::uint64_t bits = window();
    std::uint32_t ones = static_cast<std::uint32_t>(std::countr_one(bits));
    const std::uint32_t base = 1u << state.all.width;
    std::uint32_t value;
    RiceState &low = ones == 0 ? state.all : state.large;
    const std::uint64_t mask = (std::uint64_t(1) << low.width) - 1;
    if (ones + 1 + low.width <= windowBits) [[likely]] {
        value = static_cast<std::uint32_t>(bits >> (ones + 1) & mask);
        m_bitPosition += ones + 1 + low.width;
    } else {
        ones = readOnes();
        refill();
        value = static_cast<std::uint32_t>(window() & mask);
        m_bitPosition += low.width;
    }
    if (ones != 0) {
        value += (ones - 1) << low.width;
        low.adapt(value);
        value += base;
    }
    state.all.adapt(value);
    return value;
}

template <unsigned Channels>
void BitReader::readResiduals(std::span<std::int32_t> residuals, unsigned channels)
{
    std::array<ChannelRice, Channels> states;
    const unsigned count = Channels <= 2 ? Channels : channels;
    for (std::size_t i = 0; i < residuals.size(); i += count) {
        refill();
        for (unsigned c = 0; c < count; ++c) {
            residuals[i + c] = withSign(readValue(states[c]));
            if (std::max(states[c].all.width, states[c].large.width) > widestLow) {
                throw FrameDamage("its codes are impossible");
            }
        }
        checkEnd();
    }
}

void BitReader::readChecked(std::span<std::int32_t> residuals, unsigned channels)
{
    if (channels == 1) {
        readResiduals<1>(residuals, channels);
    } else if (channels == 2) {
        readResiduals<2>(residuals, channels);
    } else {
        readResiduals<StreamHeader::largestChannels>(residuals, channels);
    }
    m_bitPosition = (m_bitPosition + 7) / 8 * 8;
    checkEnd();
    if (m_frameEnd && m_bufferOffset + m_bitPosition / 8 != *m_frameEnd) {
        throw FrameDamage("it is longer than its codes");
    }
    refill();
    const std::size_t end = m_bitPosition / 8;
    addToChecksum(end);
    m_bitPosition += checksumBytes * 8;
    if (m_bitPosition > m_validBytes * 8) {
        throw tools::ToolError(m_input.name() + " ends too early");
    }
    if (m_checksum != tools::readLe32(m_buffer.data() + end)) {
        throw FrameDamage("checksum mismatch");
    }
}

// Goes to the next frame's first byte, wherever reading has stopped.
void BitReader::leaveFrame()
{
    if (!m_frameEnd) {
        return;
    }
    const std::uint64_t next = *m_frameEnd + checksumBytes;
    if (next <= m_bufferOffset + m_validBytes) {
        m_bitPosition = static_cast<std::size_t>(next - m_bufferOffset) * 8;
        return;
    }
    const std::uint64_t missing = next - (m_bufferOffset + m_validBytes);
    const std::uint64_t skipped = m_input.skip(missing);
    m_bufferOffset = next;
    m_validBytes = m_bitPosition = m_checkedBytes = 0;
    if (skipped < missing) {
        throw tools::ToolError(m_input.name() + " ends too early");
    }
}

void BitReader::readFrame(std::span<std::int32_t> residuals, unsigned channels,
                          std::optional<std::uint32_t> size)
{
    m_checkedBytes = m_bitPosition / 8;
    m_checksum = 0;
    m_frameEnd.reset();
    if (size && *size < checksumBytes) {
        throw FrameDamage("its size is impossible");
    }
    if (size) {
        m_frameEnd = m_bufferOffset + m_bitPosition / 8 + *size - checksumBytes;
    }
    try {
        readChecked(residuals, channels);
    } catch (const FrameDamage &) {
        leaveFrame();
        throw;
    }
}

} // namespace kruv::ttaenc
