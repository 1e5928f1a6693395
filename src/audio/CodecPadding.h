// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"

#include <cstdint>

namespace kruv {

/// What an encoder put around the audio, where FFmpeg does not tell or does not cut it.
struct CodecPadding
{
    /// Frames that a demuxer counts into the length but cuts off when the audio is read.
    std::int64_t counted = 0;
    /// Frames that are decoded before the audio and have to be cut off.
    std::int64_t leading = 0;
    /// The length of the audio where the file states it better than the demuxer does; 0 otherwise.
    std::int64_t stated = 0;

    static CodecPadding of(const QString &path, const AudioContent &content);
};

} // namespace kruv
