// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::shorten {

/// What a Shorten stream states before its first function.
struct StreamHeader
{
    std::uint32_t version = 2;     ///< 1 to 3
    std::uint32_t typeNumber = 5;  ///< see SampleType
    std::uint32_t channels = 2;    ///< 1 to largestChannels
    std::uint32_t blockSize = 256; ///< samples per channel in a block, 1 to largestBlock
    std::uint32_t maxLpcOrder = 0; ///< 0 where linear prediction is not used
    std::uint32_t meanBlocks = 4;  ///< past blocks in the mean estimate

    /// Samples of the past that predictors may reach back to.
    std::uint32_t historyLength() const { return maxLpcOrder > 3 ? maxLpcOrder : 3; }
};

constexpr std::uint32_t largestChannels = 8;
constexpr std::uint32_t largestBlock = 65535;
constexpr std::uint32_t largestLpcOrder = 1024;
constexpr std::uint32_t largestMeanBlocks = 32768;
constexpr std::uint32_t largestShift = 31;

/// The codes that begin each piece of the stream.
enum class Function : std::uint32_t {
    Diff0 = 0,
    Diff1 = 1,
    Diff2 = 2,
    Diff3 = 3,
    Quit = 4,
    BlockSize = 5,
    BitShift = 6,
    Qlpc = 7,
    Zero = 8,
    Verbatim = 9
};

/// Widths of the low parts of the codes (the k of a Rice code) that the format fixes.
namespace width {
constexpr unsigned function = 2;
constexpr unsigned bitShift = 2;
constexpr unsigned energy = 3;
constexpr unsigned lpcOrder = 2;
constexpr unsigned lpcCoefficient = 5;
constexpr unsigned verbatimLength = 5;
constexpr unsigned verbatimByte = 8;
constexpr unsigned skippedByte = 7;
} // namespace width

/// Linear prediction coefficients are stored as multiples of 1/32.
constexpr unsigned lpcFractionBits = 5;

} // namespace kruv::shorten
