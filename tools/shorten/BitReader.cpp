// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/BitReader.h"

#include "common/InputStream.h"
#include "common/ToolError.h"

#include <bit>
#include <cstring>

namespace kruv::shorten {

namespace {

constexpr std::size_t readBufferBytes = std::size_t(64) * 1024;
// Room behind the valid bytes, kept zero at the end of input, so that whole words can be loaded anywhere.
constexpr std::size_t paddingBytes = 16;
// Bits of window() that are real wherever the window begins within its first byte.
constexpr unsigned windowBits = 57;

std::uint64_t loadHighFirst(const std::uint8_t *bytes)
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

std::int32_t signedFrom(std::uint64_t code)
{
    const auto low = static_cast<std::uint32_t>(code);
    return static_cast<std::int32_t>((low >> 1) ^ (0u - (low & 1)));
}

} // namespace

BitReader::BitReader(tools::InputStream &input)
    : m_input(input)
    , m_buffer(readBufferBytes + paddingBytes)
{
}

void BitReader::refill()
{
    const std::size_t consumed = m_bitPosition / 8;
    if (m_inputEnded || m_validBytes >= consumed + paddingBytes) {
        return;
    }
    const std::size_t kept = m_validBytes - consumed;
    std::memmove(m_buffer.data(), m_buffer.data() + consumed, kept);
    m_bitPosition %= 8;
    m_validBytes = kept + m_input.read(std::span(m_buffer).subspan(kept, readBufferBytes - kept));
    m_inputEnded = m_validBytes < readBufferBytes;
    std::memset(m_buffer.data() + m_validBytes, 0, paddingBytes);
}

std::uint64_t BitReader::window() const
{
    return loadHighFirst(m_buffer.data() + m_bitPosition / 8) << (m_bitPosition % 8);
}

std::uint64_t BitReader::readRice(unsigned lowBits)
{
    const auto checkEnd = [this] {
        if (m_bitPosition > m_validBytes * 8) {
            throw tools::ToolError(m_input.name() + " ends before the end of its stream");
        }
    };
    std::uint64_t high = 0;
    for (;;) {
        refill();
        const auto zeros = static_cast<unsigned>(std::countl_zero(window()));
        if (zeros < windowBits) {
            high += zeros;
            m_bitPosition += zeros + 1;
            break;
        }
        high += windowBits;
        m_bitPosition += windowBits;
        checkEnd();
        if (high > 0xFFFFFFFF) {
            throw tools::ToolError(m_input.name() + " is damaged: a code is too long");
        }
    }
    refill();
    checkEnd();
    const std::uint64_t low = lowBits == 0 ? 0 : window() >> (64 - lowBits);
    m_bitPosition += lowBits;
    checkEnd();
    return high << lowBits | low;
}

std::uint32_t BitReader::readUnsigned(unsigned k)
{
    const std::uint64_t value = readRice(k);
    if (value > 0xFFFFFFFF) {
        throw tools::ToolError(m_input.name() + " is damaged: a number is too large");
    }
    return static_cast<std::uint32_t>(value);
}

std::int32_t BitReader::readSigned(unsigned k)
{
    return signedFrom(readRice(k + 1));
}

std::uint32_t BitReader::readLong()
{
    const std::uint32_t k = readUnsigned(2);
    if (k > 31) {
        throw tools::ToolError(m_input.name() + " is damaged: a number is too large");
    }
    return readUnsigned(k);
}

void BitReader::readSigned(unsigned k, std::span<std::int32_t> destination)
{
    while (!destination.empty()) {
        refill();
        destination = destination.subspan(readSignedFast(k + 1, destination));
        if (destination.empty()) {
            return;
        }
        // Long codes and the last bytes of the input.
        destination.front() = readSigned(k);
        destination = destination.subspan(1);
    }
}

// Decodes as long as codes are short and whole words can be loaded; returns how many it did.
std::size_t BitReader::readSignedFast(unsigned lowBits, std::span<std::int32_t> destination)
{
    if (m_validBytes < m_bitPosition / 8 + paddingBytes) {
        return 0;
    }
    const std::uint8_t *next = m_buffer.data() + m_bitPosition / 8;
    const std::uint8_t *const last = m_buffer.data() + m_validBytes - sizeof(std::uint64_t);
    std::uint64_t bits = window();
    auto available = static_cast<unsigned>(56 - m_bitPosition % 8);
    next += 7;
    std::size_t done = 0;
    while (done < destination.size() && next <= last) {
        // Bits that a step loads beyond the counted ones are loaded again, equal, by the following one.
        bits |= loadHighFirst(next) >> available;
        next += (63 - available) / 8;
        available |= 56;
        const auto zeros = static_cast<unsigned>(std::countl_zero(bits));
        const unsigned length = zeros + 1 + lowBits;
        if (length > 56) {
            break;
        }
        const std::uint64_t low = (bits << (zeros + 1)) >> (64 - lowBits);
        destination[done++] = signedFrom(std::uint64_t(zeros) << lowBits | low);
        bits <<= length;
        available -= length;
    }
    m_bitPosition = static_cast<std::size_t>(next - m_buffer.data()) * 8 - available;
    return done;
}

} // namespace kruv::shorten
