// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace kruv::aacplusenc {

/// All that the movie box of a file with one AAC track says. Times are counted in frames (sample times) of
/// the decoded audio, the rate of which is the time scale too.
struct AacTrack
{
    std::uint32_t sampleRate = 0;     ///< Hz, of the decoded audio (after spectral band replication)
    std::uint32_t coreSampleRate = 0; ///< Hz, of the AAC core; the time scale of the media
    unsigned channels = 0;            ///< of the decoded audio (after parametric stereo)
    std::uint32_t framesPerAccessUnit = 0;
    std::uint32_t encoderDelay = 0; ///< frames that a decoder puts out before the source's first one
    std::uint64_t sourceFrames = 0;
    std::uint32_t bitRate = 0;                  ///< bit/s
    std::vector<std::uint8_t> decoderConfig;    ///< AudioSpecificConfig (ISO/IEC 14496-3)
    std::vector<std::uint32_t> accessUnitSizes; ///< bytes
    std::vector<std::uint64_t> chunkOffsets;    ///< from the start of the file
    std::uint32_t accessUnitsPerChunk = 1;      ///< the last chunk may hold fewer
};

/// The complete movie box ("moov") for @p track, with an edit list and a gapless comment that cut the
/// encoder's delay and the padding of the last access unit off, so that the decoded length is the source's.
std::vector<std::uint8_t> movieBox(const AacTrack &track);

} // namespace kruv::aacplusenc
