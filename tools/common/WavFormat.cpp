// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WavFormat.h"

#include "common/LittleEndian.h"

#include <algorithm>
#include <cstring>

namespace kruv::tools {

std::array<std::uint8_t, 44> WavFormat::header(std::uint64_t dataBytes) const
{
    constexpr std::uint64_t largest = 0xFFFFFFFF;
    std::array<std::uint8_t, 44> bytes = {};
    std::memcpy(&bytes[0], "RIFF", 4);
    writeLe32(&bytes[4], static_cast<std::uint32_t>(std::min(largest, 36 + dataBytes + dataBytes % 2)));
    std::memcpy(&bytes[8], "WAVEfmt ", 8);
    writeLe32(&bytes[16], 16);
    writeLe16(&bytes[20], 1);
    writeLe16(&bytes[22], channels);
    writeLe32(&bytes[24], sampleRate);
    writeLe32(&bytes[28], sampleRate * bytesPerFrame());
    writeLe16(&bytes[32], bytesPerFrame());
    writeLe16(&bytes[34], bitsPerSample);
    std::memcpy(&bytes[36], "data", 4);
    writeLe32(&bytes[40], static_cast<std::uint32_t>(std::min(largest, dataBytes)));
    return bytes;
}

} // namespace kruv::tools
