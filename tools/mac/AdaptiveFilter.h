// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FilterKernel.h"
#include "Level.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kruv::mac {

/// A sign-sign LMS filter over 16-bit history. Reset at each frame start.
///
/// The adaption of one sample and the dot product of the next share one pass over the coefficients; so what
/// the newest sample does to the steps waits in m_newestStep until that pass is over.
class AdaptiveFilter
{
public:
    AdaptiveFilter(FilterShape shape, bool coarseSteps, FilterKernel kernel);

    void reset();

    /// Takes the filter's prediction off `value`.
    int32_t encode(int32_t value, bool wideRounding)
    {
        const uint32_t residual = static_cast<uint32_t>(value) - static_cast<uint32_t>(predict(wideRounding));
        push(value, static_cast<int32_t>(residual));
        return static_cast<int32_t>(residual);
    }

    /// The inverse of encode().
    int32_t decode(int32_t residual, bool wideRounding)
    {
        const uint32_t value = static_cast<uint32_t>(residual) + static_cast<uint32_t>(predict(wideRounding));
        push(static_cast<int32_t>(value), residual);
        return static_cast<int32_t>(value);
    }

private:
    static constexpr int maxOrder = 1280;
    /// Samples between two moves of the history to the start of its buffer.
    static constexpr int window = 512;
    /// The steps reach one sample further back than the history.
    static constexpr int lead = 1;

    int32_t predict(bool wideRounding);
    void push(int32_t value, int32_t residual);
    int16_t stepFor(int32_t value);
    void moveToStart();

    alignas(64) std::array<int16_t, maxOrder> m_coefficients;
    alignas(64) std::array<int16_t, lead + maxOrder + window> m_history;
    alignas(64) std::array<int16_t, lead + maxOrder + window> m_steps;
    FilterKernel m_kernel;
    int m_order;
    int m_shift;
    bool m_coarseSteps;
    int m_position = 0;
    int m_sign = 0;
    int16_t m_newestStep = 0;
    int32_t m_average = 0;
};

inline int32_t AdaptiveFilter::predict(bool wideRounding)
{
    int16_t *const now = m_steps.data() + m_position;
    const int32_t sum = m_kernel(m_coefficients.data(), m_history.data() + m_position - m_order,
                                 now - 1 - m_order, m_sign, m_order);
    now[-1] = m_newestStep;
    // Exact halvings: the values are powers of two, or zero.
    if (m_coarseSteps) {
        now[-5] = static_cast<int16_t>(now[-5] / 2);
    } else {
        now[-2] = static_cast<int16_t>(now[-2] / 2);
        now[-3] = static_cast<int16_t>(now[-3] / 2);
    }
    now[-9] = static_cast<int16_t>(now[-9] / 2);

    const int32_t half = 1 << (m_shift - 1);
    if (wideRounding) {
        return static_cast<int32_t>((int64_t{sum} + half) >> m_shift);
    }
    return static_cast<int32_t>(static_cast<uint32_t>(sum) + static_cast<uint32_t>(half)) >> m_shift;
}

inline int16_t AdaptiveFilter::stepFor(int32_t value)
{
    const int32_t signMask = value >> 31;
    if (m_coarseSteps) {
        return static_cast<int16_t>(4 * ((value > 0) - (value < 0)));
    }
    const auto wrap = [](uint32_t number) { return static_cast<int32_t>(number); };
    const int32_t magnitude = wrap((static_cast<uint32_t>(value) ^ static_cast<uint32_t>(signMask)) -
                                   static_cast<uint32_t>(signMask));
    const auto average = static_cast<uint32_t>(m_average);
    const int larger = (magnitude > wrap(3 * average)) + (magnitude > wrap(4 * average) / 3);
    const int step = magnitude == 0 ? 0 : 8 << larger;
    m_average = wrap(average + static_cast<uint32_t>(wrap(static_cast<uint32_t>(magnitude) - average) / 16));
    return static_cast<int16_t>((step ^ signMask) - signMask);
}

inline void AdaptiveFilter::push(int32_t value, int32_t residual)
{
    m_sign = (residual > 0) - (residual < 0);
    m_history[static_cast<std::size_t>(m_position)] =
        static_cast<int16_t>(std::clamp<int32_t>(value, -32768, 32767));
    m_newestStep = stepFor(value);
    if (++m_position == lead + m_order + window) {
        moveToStart();
    }
}

} // namespace kruv::mac
