// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/Differences.h"

#include <algorithm>
#include <cstdlib>

// The loops are plain sums that the compiler turns into vector code; where the program's loader can choose, a
// second copy of them uses wider registers. All copies give the same numbers. The loader's choice runs before
// the thread sanitizer is ready for it.
#if defined(__x86_64__) && defined(__linux__) && defined(__GNUC__) && !defined(__clang__) &&                 \
    !defined(__SANITIZE_THREAD__)
#define KRUV_WIDE_COPIES __attribute__((target_clones("avx2", "default")))
#else
#define KRUV_WIDE_COPIES
#endif

namespace kruv::shorten {

namespace {

// The largest DIFF3 residual of 16-bit samples is below 2^19, so that 2^12 of them fit into 32 bits.
constexpr std::size_t sumsPerRound = 4096;

KRUV_WIDE_COPIES
void addRound(const std::int32_t *y, std::ptrdiff_t count, std::int32_t offset, std::uint64_t *sums)
{
    std::uint32_t sum0 = 0;
    std::uint32_t sum1 = 0;
    std::uint32_t sum2 = 0;
    std::uint32_t sum3 = 0;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const std::int32_t first = y[i] - y[i - 1];
        const std::int32_t second = first - (y[i - 1] - y[i - 2]);
        const std::int32_t third = second - (y[i - 1] - 2 * y[i - 2] + y[i - 3]);
        sum0 += static_cast<std::uint32_t>(std::abs(y[i] - offset));
        sum1 += static_cast<std::uint32_t>(std::abs(first));
        sum2 += static_cast<std::uint32_t>(std::abs(second));
        sum3 += static_cast<std::uint32_t>(std::abs(third));
    }
    sums[0] += sum0;
    sums[1] += sum1;
    sums[2] += sum2;
    sums[3] += sum3;
}

} // namespace

std::array<std::uint64_t, 4> differenceSums(const std::int32_t *samples, std::size_t count,
                                            std::int32_t offset)
{
    std::array<std::uint64_t, 4> sums = {};
    while (count > 0) {
        const std::size_t step = std::min(count, sumsPerRound);
        addRound(samples, static_cast<std::ptrdiff_t>(step), offset, sums.data());
        samples += step;
        count -= step;
    }
    return sums;
}

void differences(const std::int32_t *y, unsigned order, std::int32_t offset,
                 std::span<std::int32_t> destination)
{
    const auto count = static_cast<std::ptrdiff_t>(destination.size());
    std::int32_t *out = destination.data();
    switch (order) {
    case 0:
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            out[i] = y[i] - offset;
        }
        break;
    case 1:
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            out[i] = y[i] - y[i - 1];
        }
        break;
    case 2:
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            out[i] = y[i] - 2 * y[i - 1] + y[i - 2];
        }
        break;
    default:
        for (std::ptrdiff_t i = 0; i < count; ++i) {
            out[i] = y[i] - 3 * (y[i - 1] - y[i - 2]) - y[i - 3];
        }
        break;
    }
}

} // namespace kruv::shorten
