// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Level.h"

#include <algorithm>
#include <array>

namespace kruv::mac {

namespace {

constexpr std::array<FilterShape, 1> normalFilters{{{16, 11}}};
constexpr std::array<FilterShape, 1> highFilters{{{64, 11}}};
constexpr std::array<FilterShape, 2> extraHighFilters{{{256, 13}, {32, 10}}};
constexpr std::array<FilterShape, 3> insaneFilters{{{1280, 15}, {256, 13}, {16, 11}}};

constexpr uint32_t shortFrame = 73728;

constexpr std::array<Level, 5> levels{{
    {1000, "fast", shortFrame, {}},
    {2000, "normal", shortFrame, normalFilters},
    {3000, "high", shortFrame, highFilters},
    {4000, "extra high", 4 * shortFrame, extraHighFilters},
    {5000, "insane", 16 * shortFrame, insaneFilters},
}};

} // namespace

const Level *findLevel(unsigned number)
{
    const auto found = std::find_if(levels.begin(), levels.end(),
                                    [number](const Level &level) { return level.number == number; });
    return found == levels.end() ? nullptr : &*found;
}

} // namespace kruv::mac
