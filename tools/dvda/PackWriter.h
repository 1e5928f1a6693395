// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Disc.h"
#include "common/ByteSink.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace kruv::dvda {

/// Cuts the audio of one title into the packs of an MPEG-2 program stream, a sector each: pack header, one
/// packet of private stream 1 with the LPCM header in front of the audio, and padding where a whole number of
/// frame pairs leaves too much room.
///
/// Every track begins a pack of its own; clocks and counters run on from track to track, so that the title
/// plays without gaps.
class PackWriter
{
public:
    /// Packs go to @p sink, which must outlive the writer; @p firstSector is the number of the first one.
    PackWriter(const LpcmFormat &format, std::uint32_t firstSector, tools::ByteSink &sink);

    /// Appends whole frames to the present track: little-endian signed samples, interleaved in source order,
    /// of the format's size.
    void write(std::span<const std::uint8_t> frames);
    /// Ends the present track and tells where it lies; what is written next belongs to a new one. An odd
    /// number of frames is filled up with a silent one, since frames are stored in pairs. The track must not
    /// be empty.
    Track endTrack();

    /// Packs written so far.
    std::uint32_t packs() const { return m_packs; }

private:
    void storePairs(std::span<const std::uint8_t> frames);
    std::size_t waiting() const { return m_stored.size() - m_taken; }
    std::size_t room() const;
    std::size_t capacity() const;
    void writePack(std::size_t audioBytes);
    std::uint64_t arrivalTime() const;

    const LpcmFormat m_format;
    const std::vector<std::uint8_t> m_permutation;
    const std::uint32_t m_firstSector;
    tools::ByteSink &m_sink;

    std::vector<std::uint8_t> m_unpaired; ///< a frame whose partner has not come yet
    std::vector<std::uint8_t> m_stored;   ///< audio in stored order; the first m_taken bytes are written
    std::size_t m_taken = 0;
    std::uint32_t m_packs = 0;
    std::uint64_t m_trackStart = 0; ///< frames of the title before the present track
    std::uint64_t m_trackBytes = 0; ///< audio bytes of the present track already written
    std::uint32_t m_trackFirstPack = 0;
    std::array<std::uint64_t, 4> m_firstFrames{}; ///< first frame of each of the last four packs
    std::uint64_t m_lastArrival = 0;              ///< 27 MHz
};

} // namespace kruv::dvda
