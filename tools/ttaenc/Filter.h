// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace kruv::ttaenc {

/// TTA's two predictors, a fixed one and a sign-driven adaptive one of eight taps, over one coded frame. All
/// state begins at zero with each frame. Arithmetic wraps at 32 bits, on purpose: loud 24-bit audio gets
/// there, and encoder and decoder must wrap alike.
struct Filter
{
    using Function = void (*)(std::int32_t *data, std::size_t steps, unsigned channels,
                              unsigned bytesPerSample);

    /// Samples, interleaved by channel, become residuals in place.
    Function encode;
    /// Residuals become samples in place.
    Function decode;

    /// The fastest one for this processor. All give the same numbers.
    static const Filter &best();
    static const Filter &portable();
    /// Null where the processor lacks the instructions.
    static const Filter *sse41();
};

} // namespace kruv::ttaenc
