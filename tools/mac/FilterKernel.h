// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::mac {

/// Adds `sign` (-1, 0, 1) times `steps` to `coefficients`, then returns the dot product of the new
/// coefficients and `history`; both wrap (16 and 32 bits). `count` is a multiple of 16; nothing need be
/// aligned.
using FilterKernel = int32_t (*)(int16_t *coefficients, const int16_t *history, const int16_t *steps,
                                 int sign, int count);

struct NamedKernel
{
    const char *name;
    FilterKernel run;
};

/// The kernels this processor can run, slowest first; the first is plain C++. All give the same bits.
std::span<const NamedKernel> availableKernels();

/// The last of availableKernels().
FilterKernel fastestKernel();

} // namespace kruv::mac
