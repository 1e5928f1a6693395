// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::mac {

/// Samples as they lie in a WAV file: 8-bit unsigned, 16 and 24-bit signed, low byte first.
template <int Bits> struct SampleFormat
{
    static constexpr int bytes = Bits / 8;

    static int32_t load(const uint8_t *place)
    {
        if constexpr (Bits == 8) {
            return place[0] - 128;
        } else if constexpr (Bits == 16) {
            return static_cast<int16_t>(place[0] | place[1] << 8);
        } else {
            return static_cast<int32_t>(uint32_t{place[0]} << 8 | uint32_t{place[1]} << 16 |
                                        uint32_t{place[2]} << 24) >>
                   8;
        }
    }

    static void store(uint8_t *place, int32_t sample)
    {
        const auto number = static_cast<uint32_t>(sample) + (Bits == 8 ? 128U : 0U);
        for (int i = 0; i < bytes; ++i) {
            place[i] = static_cast<uint8_t>(number >> (8 * i));
        }
    }
};

/// Calls `action` with the SampleFormat for 8, 16 or 24 bits.
template <typename Action> void withSampleFormat(unsigned bits, Action &&action)
{
    if (bits == 8) {
        action(SampleFormat<8>());
    } else if (bits == 16) {
        action(SampleFormat<16>());
    } else {
        action(SampleFormat<24>());
    }
}

} // namespace kruv::mac
