// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <cstdint>
#include <vector>

/// What stands before the first sample of WAV and AIFF files of integer PCM, and nothing more than has to.
namespace kruv::PcmHeaders {

/// RIFF with a classic format chunk (44 bytes in all), the extensible one above two channels or 16 bits.
/// `wide` gives the 64-bit form, RF64. The pad byte of odd data is counted in the sizes.
std::vector<std::uint8_t> wav(const AudioStreamFormat &format, std::int64_t frames, bool wide);

/// AIFF with a common chunk and a sample chunk.
std::vector<std::uint8_t> aiff(const AudioStreamFormat &format, std::int64_t frames);

} // namespace kruv::PcmHeaders
