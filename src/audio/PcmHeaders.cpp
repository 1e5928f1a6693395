// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmHeaders.h"

#include <array>
#include <bit>
#include <string_view>

namespace kruv::PcmHeaders {

namespace {

enum class Order { LowByteFirst, HighByteFirst };

/// Appends numbers of one byte order.
class Bytes
{
public:
    explicit Bytes(Order order)
        : m_order(order)
    {
    }

    void id(std::string_view text) { m_bytes.insert(m_bytes.end(), text.begin(), text.end()); }
    void number(std::uint64_t value, int size)
    {
        for (int i = 0; i < size; ++i) {
            const int place = m_order == Order::LowByteFirst ? i : size - 1 - i;
            m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * place)));
        }
    }
    std::vector<std::uint8_t> take() { return std::move(m_bytes); }

private:
    const Order m_order;
    std::vector<std::uint8_t> m_bytes;
};

constexpr std::uint32_t unknownSize = 0xFFFFFFFF; // of RF64, whose 64-bit sizes stand in a chunk of their own

// Speakers of one to eight channels that nobody named.
constexpr std::array<std::uint32_t, 9> usualMasks{0, 0x4, 0x3, 0x7, 0x33, 0x37, 0x3F, 0x13F, 0x63F};

std::uint32_t maskOf(const AudioStreamFormat &format)
{
    if (static_cast<std::uint32_t>(std::popcount(format.channelMask)) == format.channels) {
        return format.channelMask;
    }
    return format.channels < usualMasks.size() ? usualMasks[format.channels] : 0;
}

void formatChunk(Bytes &bytes, const AudioStreamFormat &format, bool extensible)
{
    bytes.id("fmt ");
    bytes.number(extensible ? 40 : 16, 4);
    bytes.number(extensible ? 0xFFFE : 1, 2);
    bytes.number(format.channels, 2);
    bytes.number(format.sampleRate, 4);
    bytes.number(std::uint64_t{format.sampleRate} * format.bytesPerFrame, 4);
    bytes.number(format.bytesPerFrame, 2);
    bytes.number(format.bitsPerChannel, 2);
    if (extensible) {
        bytes.number(22, 2);
        bytes.number(format.bitsPerChannel, 2);
        bytes.number(maskOf(format), 4);
        bytes.number(1, 2); // PCM; the rest is the same for every classic format
        for (const int byte : {0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71}) {
            bytes.number(static_cast<std::uint64_t>(byte), 1);
        }
    }
}

/// A positive integer as the 80-bit extended number of the IEEE.
void extendedNumber(Bytes &bytes, std::uint32_t value)
{
    const int shift = std::countl_zero(std::uint64_t{value});
    bytes.number(value == 0 ? 0 : static_cast<std::uint64_t>(16383 + 63 - shift), 2);
    bytes.number(value == 0 ? 0 : std::uint64_t{value} << shift, 8);
}

} // namespace

std::vector<std::uint8_t> wav(const AudioStreamFormat &format, std::int64_t frames, bool wide)
{
    const bool extensible = format.channels > 2 || format.bitsPerChannel > 16;
    const std::uint64_t data = static_cast<std::uint64_t>(frames) * format.bytesPerFrame;
    const std::uint64_t riff =
        4 + (wide ? 36 : 0) + (extensible ? 48 : 24) + 8 + data + data % 2; // behind the size itself
    Bytes bytes(Order::LowByteFirst);
    bytes.id(wide ? "RF64" : "RIFF");
    bytes.number(wide ? unknownSize : riff, 4);
    bytes.id("WAVE");
    if (wide) {
        bytes.id("ds64");
        bytes.number(28, 4);
        bytes.number(riff, 8);
        bytes.number(data, 8);
        bytes.number(static_cast<std::uint64_t>(frames), 8);
        bytes.number(0, 4); // no further chunk has a 64-bit size
    }
    formatChunk(bytes, format, extensible);
    bytes.id("data");
    bytes.number(wide ? unknownSize : data, 4);
    return bytes.take();
}

std::vector<std::uint8_t> aiff(const AudioStreamFormat &format, std::int64_t frames)
{
    const std::uint64_t data = static_cast<std::uint64_t>(frames) * format.bytesPerFrame;
    Bytes bytes(Order::HighByteFirst);
    bytes.id("FORM");
    bytes.number(4 + 26 + 16 + data + data % 2, 4);
    bytes.id("AIFFCOMM");
    bytes.number(18, 4);
    bytes.number(format.channels, 2);
    bytes.number(static_cast<std::uint64_t>(frames), 4);
    bytes.number(format.bitsPerChannel, 2);
    extendedNumber(bytes, format.sampleRate);
    bytes.id("SSND");
    bytes.number(8 + data, 4);
    bytes.number(0, 4); // offset
    bytes.number(0, 4); // block size
    return bytes.take();
}

} // namespace kruv::PcmHeaders
