// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kruv::dvda {

/// The format of one title's audio in the terms of DVD-Audio. All tracks of a title share one.
struct LpcmFormat
{
    std::uint32_t sampleRate = 0;          ///< Hz
    unsigned bitsPerSample = 0;            ///< 16 or 24
    unsigned channels = 0;                 ///< 1 to 6
    unsigned channelAssignment = 0;        ///< code 0 to 20: the speakers and their split into two groups
    std::uint32_t secondGroupChannels = 0; ///< bit n set: the source's n-th channel is stored in group 2

    bool operator==(const LpcmFormat &) const = default;

    std::size_t bytesPerSample() const { return bitsPerSample / 8; }
    std::size_t bytesPerFrame() const { return bytesPerSample() * channels; }
    /// Bytes of an access unit, the piece that time stamps point to: 40 frames at 44.1 and 48 kHz, 80 and 160
    /// at their double and quadruple.
    std::size_t accessUnitBytes() const;
    /// The three bytes (sample sizes, sample rates, channel assignment) that stand for the format on the
    /// disc.
    std::array<std::uint8_t, 3> code() const;
    /// More than two channels carry a downmix table.
    bool hasDownmix() const { return channels > 2; }
    /// For messages, such as "96000 Hz, 24 bit, 2 channels".
    std::string description() const;

    /// Frames are stored in pairs. Byte i of a stored pair is byte permutation[i] of the pair as
    /// little-endian interleaved samples: group 2 before group 1; within a group the upper 16 bits of all
    /// samples, high byte first, then the low bytes that 24 bits leave over.
    std::vector<std::uint8_t> pairPermutation() const;
};

/// The format that holds audio of the given properties. Depths up to 16 bit are stored in 16, those up to 24
/// in
/// 24. @p channelMask gives the speakers as in WAVEFORMATEXTENSIBLE, 0 or an unknown set means the usual ones
/// for the number of channels. Throws ToolError, with the reason, for what a disc cannot hold.
LpcmFormat lpcmFormat(std::uint32_t sampleRate, unsigned bitsPerSample, unsigned channels,
                      std::uint32_t channelMask);

} // namespace kruv::dvda
