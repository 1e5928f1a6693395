// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::mac {

/// One adaptive filter: number of taps (a multiple of 16) and the scale of its coefficients in bits.
struct FilterShape
{
    int order;
    int shift;
};

/// One of the five compression levels.
struct Level
{
    uint16_t number;                      ///< 1000 to 5000, as in the file
    const char *name;                     ///< what people call it
    uint32_t blocksPerFrame;              ///< what an encoder uses; a decoder takes the file's
    std::span<const FilterShape> filters; ///< in the encoder's order, longest first
};

/// The level with this number, or null.
const Level *findLevel(unsigned number);

} // namespace kruv::mac
