// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace kruv::mac {

/// A carry-propagating range coder with 31 bits of state; appends to a buffer of the caller's.
class RangeEncoder
{
public:
    explicit RangeEncoder(std::vector<uint8_t> &output)
        : m_output(output)
    {
    }

    /// A symbol of a table whose frequencies sum up to 65536.
    void putSymbol(uint32_t start, uint32_t width)
    {
        normalise();
        const uint32_t step = m_range >> 16;
        m_low += step * start;
        m_range = step * width;
    }
    /// `bits` (1..16) plain bits.
    void putBits(uint32_t value, int bits)
    {
        normalise();
        m_range >>= bits;
        m_low += m_range * value;
    }
    /// `value` out of `total` (1..65536) equally likely ones.
    void putUniform(uint32_t value, uint32_t total)
    {
        normalise();
        m_range /= total;
        m_low += m_range * value;
    }
    /// Writes what is pending, and the three zero bytes that a decoder looks ahead.
    void finish();

private:
    static constexpr uint32_t bottom = 0x00800000;

    void normalise()
    {
        while (m_range <= bottom) {
            emitTop();
            m_low = (m_low << 8) & 0x7FFFFFFF;
            m_range <<= 8;
        }
    }
    /// Bytes of 255 wait: a carry may still turn them into zeros.
    void emitTop()
    {
        if (m_low < 0x7F800000) {
            emit(0, static_cast<uint8_t>(m_low >> 23));
        } else if (m_low >= 0x80000000) {
            emit(1, static_cast<uint8_t>(m_low >> 23));
        } else {
            ++m_waiting;
        }
    }
    void emit(uint8_t carry, uint8_t next)
    {
        m_output.push_back(static_cast<uint8_t>(m_pending + carry));
        if (m_waiting > 0) {
            m_output.insert(m_output.end(), m_waiting, static_cast<uint8_t>(carry - 1));
        }
        m_waiting = 0;
        m_pending = next;
    }

    std::vector<uint8_t> &m_output;
    std::size_t m_waiting = 0;
    uint32_t m_low = 0;
    uint32_t m_range = 0x80000000;
    uint8_t m_pending = 0;
};

inline void RangeEncoder::finish()
{
    normalise();
    const uint32_t last = (m_low >> 23) + 1;
    emit(last > 255 ? 1 : 0, static_cast<uint8_t>(last));
    m_output.insert(m_output.end(), {m_pending, 0, 0, 0});
}

} // namespace kruv::mac
