// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::mac {

/// Versions are the decimal file version times 1000; ours is what every current decoder reads.
constexpr uint16_t versionWritten = 3990;
constexpr uint16_t versionOldest = 3950;
/// From here on: 52-byte descriptor, and filters that adapt in steps of 8, 16 and 32.
constexpr uint16_t versionDescriptor = 3980;

/// More frames than anyone has: a million of the usual length are weeks of audio.
constexpr uint32_t largestFrameCount = 1000000;

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

} // namespace kruv::mac
