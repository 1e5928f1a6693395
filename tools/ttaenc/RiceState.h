// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::ttaenc {

/// The width of a Rice code's low part, following the running mean of what it coded. Two of these serve each
/// channel: one for all numbers and one for what is left of the large ones.
struct RiceState
{
    std::uint32_t width = 10;
    std::uint32_t sum = 1u << 14;

    void adapt(std::uint32_t value)
    {
        sum += value - (sum >> 4);
        const std::uint32_t down = width > 0 && sum < threshold(width);
        const std::uint32_t up = sum > threshold(width + 1);
        width += (up & (down ^ 1)) - down;
    }

    static std::uint32_t threshold(std::uint32_t width) { return width < 27 ? 16u << width : 0x80000000u; }
};

struct ChannelRice
{
    RiceState all;
    RiceState large;
};

} // namespace kruv::ttaenc
