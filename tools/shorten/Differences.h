// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace kruv::shorten {

/// Sums of the absolute residuals of the predictors DIFF0 (the value less offset) to DIFF3 over count
/// samples. samples[-3] to samples[-1] are the ones before. Samples are of 16 bits or fewer, count at most
/// largestBlock.
std::array<std::uint64_t, 4> differenceSums(const std::int32_t *samples, std::size_t count,
                                            std::int32_t offset);

/// The residuals of DIFF0 to DIFF3 (order 0 to 3); destination.size() samples.
void differences(const std::int32_t *samples, unsigned order, std::int32_t offset,
                 std::span<std::int32_t> destination);

} // namespace kruv::shorten
