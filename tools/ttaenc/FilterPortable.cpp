// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Filter.h"
#include "ttaenc/FilterKernel.h"

namespace kruv::ttaenc {

namespace {

struct PortableTaps
{
    std::uint32_t history[8] = {};
    std::uint32_t weights[8] = {};
    std::uint32_t steps[8] = {};

    std::uint32_t adaptAndSum(std::int32_t error)
    {
        const auto direction = static_cast<std::uint32_t>((error > 0) - (error < 0));
        std::uint32_t sum = 0;
        for (unsigned i = 0; i < 8; ++i) {
            weights[i] += direction * steps[i];
            sum += history[i] * weights[i];
        }
        return sum;
    }

    static std::uint32_t stepFor(std::uint32_t value, std::uint32_t size)
    {
        return value >> 31 ? 0 - size : size;
    }

    void push(std::uint32_t value)
    {
        for (unsigned i = 0; i < 4; ++i) {
            steps[i] = steps[i + 1];
        }
        steps[4] = stepFor(history[4], 1);
        steps[5] = stepFor(history[5], 2);
        steps[6] = stepFor(history[6], 2);
        steps[7] = stepFor(history[7], 4);

        for (unsigned i = 0; i < 4; ++i) {
            history[i] = history[i + 1];
        }
        // The value and its differences up to the third.
        const std::uint32_t first = value - history[7];
        const std::uint32_t second = first - history[6];
        history[4] = second - history[5];
        history[5] = second;
        history[6] = first;
        history[7] = value;
    }
};

} // namespace

const Filter &Filter::portable()
{
    static constexpr Filter filter = {filterFrame<PortableTaps, true>, filterFrame<PortableTaps, false>};
    return filter;
}

} // namespace kruv::ttaenc
