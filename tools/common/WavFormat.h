// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kruv::tools {

/// Linear PCM in a RIFF/WAVE file: whole-byte containers, low byte first; 8 bit is unsigned, everything else
/// signed.
struct WavFormat
{
    std::uint32_t sampleRate = 44100; ///< frames per second
    std::uint16_t channels = 2;
    std::uint16_t bitsPerSample = 16;
    bool extensible = false;       ///< described by tag 0xFFFE instead of 1
    std::uint32_t channelMask = 0; ///< speakers of an extensible format, one bit a channel; 0 = not told

    std::uint32_t bytesPerSample() const { return (bitsPerSample + 7u) / 8u; }
    std::uint32_t bytesPerFrame() const { return bytesPerSample() * channels; }

    /// The plain 44-byte header for dataBytes of audio, up to the first sample. The pad byte that odd data
    /// needs is counted in it; the caller writes it. Sizes that 32 bits cannot hold become 0xFFFFFFFF ("until
    /// the end").
    std::array<std::uint8_t, 44> header(std::uint64_t dataBytes) const;
    /// The same, in the extensible form above two channels: there some readers insist on speakers.
    std::vector<std::uint8_t> headerWithSpeakers(std::uint64_t dataBytes) const;
    /// channelMask, or where it does not fit the channels their usual speakers, up to eight.
    std::uint32_t speakers() const;
};

} // namespace kruv::tools
