// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>
#include <vector>

namespace kruv {

/// Where a source is damaged that was decoded all the same. Samples are counted in each channel.
struct DamageNote
{
    struct Place
    {
        std::int64_t firstSample = 0;
        std::int64_t samples = 0;
    };

    std::vector<Place> places = {}; ///< in their order, apart from each other; none where they can't be told
    std::int64_t allSamples = 0;    ///< of the source, as it announces them
    std::uint32_t sampleRate = 0;   ///< Hz

    std::int64_t damagedSamples() const
    {
        std::int64_t sum = 0;
        for (const Place &place : places) {
            sum += place.samples;
        }
        return sum;
    }
    double seconds(std::int64_t sample) const
    {
        return static_cast<double>(sample) / (sampleRate == 0 ? 1 : sampleRate);
    }
};

} // namespace kruv
