// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

/// The format summary of an audio file.
struct AudioFormatObject
{
    std::int32_t sampleRate = 0; ///< Hz
    std::int32_t bitsPerChannel = 0;
    std::int32_t channels = 0;
    std::int64_t totalSamples = 0; ///< frames
    bool isFloatingPoint = false;

    /// Seconds; 0 where the sample rate is not known.
    double time() const
    {
        return sampleRate == 0 ? 0.0 : static_cast<double>(totalSamples) / static_cast<double>(sampleRate);
    }
};

} // namespace kruv
