// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

namespace kruv::mac {

/// The running mean of a channel's residuals, which is what adapts their code.
class ResidualMean
{
public:
    uint32_t pivot() const { return std::max(m_sum / 32, 1U); }
    uint32_t sum() const { return m_sum; }
    void update(uint32_t folded) { m_sum += (folded + 1) / 2 - ((m_sum + 16) >> 5); }

private:
    uint32_t m_sum = 16384;
};

/// Residuals as numbers from 0: 0, 1, -1, 2, -2 ...
inline uint32_t fold(int32_t residual)
{
    const auto doubled = 2 * static_cast<uint32_t>(residual);
    return residual > 0 ? doubled - 1 : 0 - doubled;
}
inline int32_t unfold(uint32_t folded)
{
    const uint32_t half = folded / 2 + (folded & 1);
    return static_cast<int32_t>(folded & 1 ? half : 0 - half);
}

/// Remainders by a pivot that no single step of the range coder can take go out in two parts.
inline int remainderShift(uint32_t pivot)
{
    return pivot < 65536 ? 0 : static_cast<int>(std::bit_width(pivot)) - 16;
}

} // namespace kruv::mac
