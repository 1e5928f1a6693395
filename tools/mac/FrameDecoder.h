// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arithmetic.h"
#include "ChannelCoder.h"
#include "FrameBytes.h"
#include "StreamInfo.h"

#include <array>
#include <cstdint>
#include <span>

namespace kruv::mac {

/// Decodes frames and checks them.
class FrameDecoder
{
public:
    /// Uses version, level, channels and bits of `info`, which must be supported ones.
    explicit FrameDecoder(const StreamInfo &info, FilterKernel kernel = fastestKernel());

    /// Fills `pcm`, whose length decides the number of blocks, with WAV audio. Throws MacError when the audio
    /// does not match the frame's checksum in any arithmetic that writers have used.
    void decode(FrameBytes &bytes, std::span<uint8_t> pcm);

private:
    bool tryDecode(FrameBytes &bytes, std::span<uint8_t> pcm);
    void fillFrame(uint32_t flags, FrameBytes &bytes, std::span<uint8_t> pcm);
    template <typename Format, bool Quotients>
    void decodeAudio(uint32_t flags, FrameBytes &bytes, std::span<uint8_t> pcm);
    template <typename Format, bool Quotients> void decodeSingle(FrameBytes &bytes, std::span<uint8_t> pcm);
    template <typename Format, bool Quotients> void decodePair(FrameBytes &bytes, std::span<uint8_t> pcm);

    StreamInfo m_info;
    std::array<ChannelCoder, 2> m_coders;
    /// What the last good frame took.
    Arithmetic m_arithmetic;
};

} // namespace kruv::mac
