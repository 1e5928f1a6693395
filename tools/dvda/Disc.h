// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "LpcmFormat.h"

#include <cstdint>
#include <vector>

namespace kruv::dvda {

constexpr std::size_t sectorBytes = 2048;
/// An audio object file ends after exactly 1 GiB and the audio goes on in the next one.
constexpr std::uint32_t sectorsPerAobFile = 524'288;

/// Where a track lies. Sectors are counted from the start of the first audio object file on, over all files;
/// times are in ticks of 90 kHz.
struct Track
{
    std::uint32_t firstSector = 0;
    std::uint32_t lastSector = 0; ///< inclusive
    std::uint32_t firstTime = 0;  ///< time stamp of the first sector
    std::uint32_t length = 0;
};

/// Consecutive tracks of one format, played without gaps.
struct Title
{
    LpcmFormat format;
    std::vector<Track> tracks;

    std::uint32_t length() const
    {
        std::uint32_t sum = 0;
        for (const Track &track : tracks) {
            sum += track.length;
        }
        return sum;
    }
};

/// The one group of titles that a disc of ours has.
struct Disc
{
    std::vector<Title> titles;
    std::uint32_t audioSectors = 0;
};

} // namespace kruv::dvda
