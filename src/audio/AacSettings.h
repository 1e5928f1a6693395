// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

struct AVCodecContext;

namespace kruv {

/// What is asked of the AAC encoder.
struct AacSettings
{
    std::uint32_t bitrate = 0; ///< bits per second; 0 = the encoder's default
    std::uint32_t quality = 0; ///< 1 to 127, for variable bit rates; 0 = the encoder's default
    std::uint32_t mode = 0;    ///< 0 constant, 1 average, 2 constrained variable, 3 variable

    /// Gives them to an encoder that is not open yet. Throws AudioError where it has no such setting.
    void applyTo(AVCodecContext &encoder) const;
};

} // namespace kruv
