// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WavFormat.h"

#include "common/LittleEndian.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace kruv::tools {

namespace {

constexpr std::array<std::uint8_t, 16> integerPcm{1,    0, 0, 0,    0, 0,    0x10, 0,
                                                  0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
constexpr std::array<std::uint32_t, 9> usualSpeakers{0, 0x4, 0x3, 0x7, 0x33, 0x37, 0x3F, 0x13F, 0x63F};

constexpr std::uint32_t plainFormatBytes = 16;

std::uint32_t limited(std::uint64_t size)
{
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(size, 0xFFFFFFFF));
}

} // namespace

std::uint32_t WavFormat::speakers() const
{
    if (std::popcount(channelMask) == channels) {
        return channelMask;
    }
    return channels < usualSpeakers.size() ? usualSpeakers.at(channels) : 0;
}

std::array<std::uint8_t, 44> WavFormat::header(std::uint64_t dataBytes) const
{
    std::array<std::uint8_t, 44> bytes = {};
    std::memcpy(&bytes[0], "RIFF", 4);
    writeLe32(&bytes[4], limited(bytes.size() - 8 + dataBytes + dataBytes % 2));
    std::memcpy(&bytes[8], "WAVEfmt ", 8);
    writeLe32(&bytes[16], plainFormatBytes);
    writeLe16(&bytes[20], 1);
    writeLe16(&bytes[22], channels);
    writeLe32(&bytes[24], sampleRate);
    writeLe32(&bytes[28], sampleRate * bytesPerFrame());
    writeLe16(&bytes[32], bytesPerFrame());
    writeLe16(&bytes[34], bitsPerSample);
    std::memcpy(&bytes[36], "data", 4);
    writeLe32(&bytes[40], limited(dataBytes));
    return bytes;
}

std::vector<std::uint8_t> WavFormat::headerWithSpeakers(std::uint64_t dataBytes) const
{
    const auto plain = header(dataBytes);
    std::vector<std::uint8_t> bytes(plain.begin(), plain.end());
    if (channels <= 2) {
        return bytes;
    }
    std::array<std::uint8_t, 24> extension = {22}; // bytes that follow
    writeLe16(&extension[2], bitsPerSample);
    writeLe32(&extension[4], speakers());
    std::ranges::copy(integerPcm, &extension[8]);
    bytes.insert(bytes.end() - 8, extension.begin(), extension.end());
    writeLe32(&bytes[4], limited(bytes.size() - 8 + dataBytes + dataBytes % 2));
    writeLe32(&bytes[16], plainFormatBytes + extension.size());
    writeLe16(&bytes[20], 0xFFFE);
    writeLe16(&bytes[34], bytesPerSample() * 8);
    return bytes;
}

} // namespace kruv::tools
