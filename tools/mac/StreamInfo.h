// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::mac {

/// Versions are the decimal file version times 1000; ours is what every current decoder reads.
constexpr uint16_t versionWritten = 3990;
constexpr uint16_t versionOldest = 3950;
/// From here on: 52-byte descriptor, and filters that adapt in steps of 8, 16 and 32.
constexpr uint16_t versionDescriptor = 3980;

/// What a decoder must know of a file; `blocks` are samples for every channel.
struct StreamInfo
{
    uint16_t version = versionWritten;
    uint16_t level = 0;
    uint16_t flags = 0;
    uint16_t bitsPerSample = 0;
    uint16_t channels = 0;
    uint32_t sampleRate = 0;
    uint32_t blocksPerFrame = 0;
    uint32_t finalFrameBlocks = 0;
    uint32_t totalFrames = 0;

    uint32_t blockBytes() const { return uint32_t{channels} * (bitsPerSample / 8U); }
    uint32_t blocksOfFrame(uint32_t frame) const
    {
        return frame + 1 == totalFrames ? finalFrameBlocks : blocksPerFrame;
    }
    uint64_t totalBlocks() const { return uint64_t{totalFrames - 1} * blocksPerFrame + finalFrameBlocks; }
};

/// One adaptive filter: number of taps (a multiple of 16) and the scale of its coefficients in bits.
struct FilterShape
{
    int order;
    int shift;
};

/// One of the five compression levels.
struct Level
{
    uint16_t number;                      ///< 1000 to 5000, as in the file
    const char *name;                     ///< what people call it
    uint32_t blocksPerFrame;              ///< what an encoder uses; a decoder takes the file's
    std::span<const FilterShape> filters; ///< in the encoder's order, longest first
};

/// The level with this number, or null.
const Level *findLevel(unsigned number);

} // namespace kruv::mac
