// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::dvda::test {

/// One pack, taken apart without any of the writer's code.
struct ReadPack
{
    std::uint64_t arrival = 0; ///< 27 MHz
    std::uint64_t time = 0;    ///< 90 kHz
    bool hasSystemHeader = false;
    unsigned counter = 0;
    unsigned headerBytes = 0; ///< of the LPCM header, behind its length byte
    unsigned pointer = 0;     ///< to the first access unit
    unsigned sampleSizes = 0;
    unsigned sampleRates = 0;
    unsigned assignment = 0;
    std::vector<std::uint8_t> audio;
    std::size_t padding = 0; ///< bytes of the padding packet, 0 = none
};

/// Fails the present test where the 2048 bytes are not a well-formed pack.
ReadPack readPack(std::span<const std::uint8_t> sector);

/// Stored audio as little-endian interleaved samples in WAV order; bits 16 or 24.
std::vector<std::uint8_t> unpack(std::span<const std::uint8_t> stored, unsigned bits, unsigned assignment);

} // namespace kruv::dvda::test
