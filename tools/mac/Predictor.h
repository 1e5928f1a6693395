// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>

namespace kruv::mac {

/// The nine-tap adaptive predictor of one channel: a fixed first-order filter, four taps on the channel's own
/// past, five on the other channel. Reset at each frame start. Arithmetic wraps at 32 bits, which 24-bit
/// audio at high amplitudes relies on; hence the unsigned numbers.
class Predictor
{
public:
    void reset() { *this = Predictor(); }

    /// The residual of `value`; `other` is the other channel's sample that a decoder has by then.
    int32_t encode(int32_t value, int32_t other, bool wide)
    {
        const uint32_t prediction = predict(static_cast<uint32_t>(other), wide);
        const uint32_t filtered = static_cast<uint32_t>(value) - smooth(m_previousValue);
        const auto residual = static_cast<int32_t>(filtered - prediction);
        adapt(residual);
        m_previousFiltered = filtered;
        m_previousValue = static_cast<uint32_t>(value);
        return residual;
    }

    /// The inverse of encode().
    int32_t decode(int32_t residual, int32_t other, bool wide)
    {
        const uint32_t filtered =
            static_cast<uint32_t>(residual) + predict(static_cast<uint32_t>(other), wide);
        const uint32_t value = filtered + smooth(m_previousValue);
        adapt(residual);
        m_previousFiltered = filtered;
        m_previousValue = value;
        return static_cast<int32_t>(value);
    }

private:
    static uint32_t smooth(uint32_t value)
    {
        return static_cast<uint32_t>(static_cast<int32_t>(31 * value) >> 5);
    }
    static int32_t signOf(uint32_t value)
    {
        const auto number = static_cast<int32_t>(value);
        return (number > 0) - (number < 0);
    }

    uint32_t predict(uint32_t other, bool wide);
    uint32_t widePrediction() const;
    void adapt(int32_t residual);

    std::array<uint32_t, 4> m_own{};
    std::array<uint32_t, 5> m_cross{};
    std::array<uint32_t, 4> m_ownWeights{360, 317, static_cast<uint32_t>(-109), 98};
    std::array<uint32_t, 5> m_crossWeights{};
    std::array<int32_t, 4> m_ownSigns{};
    std::array<int32_t, 5> m_crossSigns{};
    uint32_t m_previousValue = 0;
    uint32_t m_previousOther = 0;
    uint32_t m_previousFiltered = 0;
};

inline uint32_t Predictor::predict(uint32_t other, bool wide)
{
    m_own = {m_previousFiltered, m_previousFiltered - m_own[0], m_own[1], m_own[2]};
    m_ownSigns = {signOf(m_own[0]), signOf(m_own[1]), m_ownSigns[1], m_ownSigns[2]};
    const uint32_t filteredOther = other - smooth(m_previousOther);
    m_previousOther = other;
    m_cross = {filteredOther, filteredOther - m_cross[0], m_cross[1], m_cross[2], m_cross[3]};
    m_crossSigns = {signOf(m_cross[0]), signOf(m_cross[1]), m_crossSigns[1], m_crossSigns[2],
                    m_crossSigns[3]};
    if (wide) {
        return widePrediction();
    }

    uint32_t own = 0;
    for (std::size_t i = 0; i < m_own.size(); ++i) {
        own += m_own[i] * m_ownWeights[i];
    }
    uint32_t cross = 0;
    for (std::size_t i = 0; i < m_cross.size(); ++i) {
        cross += m_cross[i] * m_crossWeights[i];
    }
    const uint32_t sum = own + static_cast<uint32_t>(static_cast<int32_t>(cross) >> 1);
    return static_cast<uint32_t>(static_cast<int32_t>(sum) >> 10);
}

inline uint32_t Predictor::widePrediction() const
{
    const auto product = [](uint32_t a, uint32_t b) {
        return int64_t{static_cast<int32_t>(a)} * static_cast<int32_t>(b);
    };
    // Sums of products below 2^62 in magnitude: unsigned, so that damaged data stays defined.
    uint64_t own = 0;
    for (std::size_t i = 0; i < m_own.size(); ++i) {
        own += static_cast<uint64_t>(product(m_own[i], m_ownWeights[i]));
    }
    uint64_t cross = 0;
    for (std::size_t i = 0; i < m_cross.size(); ++i) {
        cross += static_cast<uint64_t>(product(m_cross[i], m_crossWeights[i]));
    }
    const uint64_t sum = own + static_cast<uint64_t>(static_cast<int64_t>(cross) >> 1);
    return static_cast<uint32_t>(static_cast<int64_t>(sum) >> 10);
}

inline void Predictor::adapt(int32_t residual)
{
    const int32_t sign = (residual > 0) - (residual < 0);
    for (std::size_t i = 0; i < m_ownWeights.size(); ++i) {
        m_ownWeights[i] += static_cast<uint32_t>(sign * m_ownSigns[i]);
    }
    for (std::size_t i = 0; i < m_crossWeights.size(); ++i) {
        m_crossWeights[i] += static_cast<uint32_t>(sign * m_crossSigns[i]);
    }
}

} // namespace kruv::mac
