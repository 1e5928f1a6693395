// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::mac {

/// A frame opens with a checksum word, most significant byte first: the CRC-32 of its audio without the
/// lowest bit; the top bit tells that a word of these flags follows.
constexpr uint32_t frameFlagsFollow = 0x80000000;
/// One channel: all samples are zero. Two channels: the second is.
constexpr uint32_t frameSecondSilent = 1;
constexpr uint32_t frameFirstSilent = 2;
constexpr uint32_t frameEqualChannels = 4;

constexpr bool isSilentFrame(uint32_t flags, unsigned channels)
{
    // With one of two channels silent the frame is coded as if the flag were not there.
    const uint32_t needed = channels == 1 ? frameSecondSilent : frameFirstSilent | frameSecondSilent;
    return (flags & needed) == needed;
}

} // namespace kruv::mac
