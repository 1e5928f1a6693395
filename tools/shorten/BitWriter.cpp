// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/BitWriter.h"

#include "common/ByteSink.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace kruv::shorten {

namespace {

constexpr std::size_t writeBufferBytes = std::size_t(64) * 1024;
// A put stores a whole word, of which at most the first seven bytes count.
constexpr std::size_t slackBytes = 16;
constexpr unsigned longestPut = 56;
constexpr unsigned wordBytes = 4;

void storeHighFirst(std::uint8_t *bytes, std::uint64_t word)
{
    if (std::endian::native == std::endian::little) {
        word = __builtin_bswap64(word);
    }
    std::memcpy(bytes, &word, sizeof word);
}

std::uint32_t signToLowBit(std::int32_t value)
{
    return static_cast<std::uint32_t>(value) << 1 ^ static_cast<std::uint32_t>(value >> 31);
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
    m_bits = m_bits << length | code;
    m_bitCount += length;
    storeHighFirst(m_buffer.data() + m_used, m_bits << (64 - m_bitCount));
    m_used += m_bitCount / 8;
    m_bitCount %= 8;
}

void BitWriter::flush()
{
    m_sink.write(std::span(m_buffer).first(m_used));
    m_bytesFlushed += m_used;
    // The bits of the unfinished byte are in m_bits and are stored again by the next put.
    m_used = 0;
}

void BitWriter::putRice(std::uint32_t value, unsigned lowBits)
{
    if (m_used >= writeBufferBytes - sizeof(std::uint64_t)) {
        flush();
    }
    std::uint64_t zeros = std::uint64_t(value) >> lowBits;
    while (zeros + 1 + lowBits > longestPut) {
        const auto step = static_cast<unsigned>(std::min<std::uint64_t>(zeros, 32));
        put(0, step);
        zeros -= step;
        if (m_used >= writeBufferBytes - sizeof(std::uint64_t)) {
            flush();
        }
    }
    const std::uint64_t one = std::uint64_t(1) << lowBits;
    put(one | (value & (one - 1)), static_cast<unsigned>(zeros) + 1 + lowBits);
}

void BitWriter::putUnsigned(std::uint32_t value, unsigned k)
{
    putRice(value, k);
}

void BitWriter::putSigned(std::int32_t value, unsigned k)
{
    putRice(signToLowBit(value), k + 1);
}

void BitWriter::putLong(std::uint32_t value)
{
    const auto k = static_cast<unsigned>(std::bit_width(value));
    putUnsigned(k, 2);
    putUnsigned(value, k);
}

void BitWriter::putSigned(std::span<const std::int32_t> values, unsigned k)
{
    const unsigned lowBits = k + 1;
    const std::uint64_t one = std::uint64_t(1) << lowBits;
    while (!values.empty()) {
        if (m_used >= writeBufferBytes / 2) {
            flush();
        }
        // Short codes go through registers; their number is limited so that the buffer needs no check.
        const std::size_t count = std::min(values.size(), writeBufferBytes / 2 / 8);
        std::size_t done = 0;
        std::uint64_t bits = m_bits;
        unsigned bitCount = m_bitCount;
        std::uint8_t *out = m_buffer.data() + m_used;
        for (; done < count; ++done) {
            const std::uint32_t value = signToLowBit(values[done]);
            const std::uint32_t length =
                static_cast<std::uint32_t>(std::uint64_t(value) >> lowBits) + 1 + lowBits;
            if (length > longestPut) {
                break;
            }
            bits = bits << length | one | (value & (one - 1));
            bitCount += length;
            storeHighFirst(out, bits << (64 - bitCount));
            out += bitCount / 8;
            bitCount %= 8;
        }
        m_bits = bits;
        m_bitCount = bitCount;
        m_used = static_cast<std::size_t>(out - m_buffer.data());
        if (done < count) {
            putSigned(values[done++], k);
        }
        values = values.subspan(done);
    }
}

void BitWriter::finish()
{
    put(1, 1);
    while (m_bitCount != 0 || (m_bytesFlushed + m_used) % wordBytes != 0) {
        put(0, 8 - m_bitCount);
    }
    flush();
}

} // namespace kruv::shorten
