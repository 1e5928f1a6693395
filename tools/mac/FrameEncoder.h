// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ChannelCoder.h"
#include "StreamInfo.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace kruv::mac {

/// Codes frames; each stands alone.
class FrameEncoder
{
public:
    /// Uses level, channels and bits of `info`, which must be supported ones.
    explicit FrameEncoder(const StreamInfo &info, FilterKernel kernel = fastestKernel());

    /// Codes whole blocks of WAV audio as one frame. The result is in coding order and valid until the next
    /// call.
    std::span<const uint8_t> encode(std::span<const uint8_t> pcm);

private:
    uint32_t flagsOf(std::span<const uint8_t> pcm) const;
    void putWord(uint32_t word);
    template <typename Format> void encodeSingle(std::span<const uint8_t> pcm);
    template <typename Format> void encodePair(std::span<const uint8_t> pcm);

    StreamInfo m_info;
    /// The mid channel (or the only one), then the difference channel.
    std::array<ChannelCoder, 2> m_coders;
    std::vector<uint8_t> m_output;
};

} // namespace kruv::mac
