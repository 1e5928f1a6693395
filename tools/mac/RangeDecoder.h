// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FrameBytes.h"
#include "MacError.h"
#include "SymbolTable.h"

#include <cstdint>

namespace kruv::mac {

/// The inverse of RangeEncoder. Data that no encoder can have written throws MacError.
class RangeDecoder
{
public:
    /// Skips the encoder's first byte, which carries nothing.
    explicit RangeDecoder(FrameBytes &bytes)
        : m_bytes(bytes)
    {
        m_bytes.next();
        m_lastByte = m_bytes.next();
        m_low = m_lastByte >> 1;
    }

    uint32_t getSymbol(const SymbolTable &table)
    {
        normalise();
        const uint32_t step = m_range >> 16;
        const uint32_t frequency = m_low / step;
        if (frequency > 65535) {
            throwDamaged();
        }
        const uint32_t symbol = table.find(frequency);
        m_low -= step * table.start(symbol);
        m_range = step * table.width(symbol);
        return symbol;
    }
    /// `bits` (0..16) plain bits.
    uint32_t getBits(int bits)
    {
        normalise();
        m_range >>= bits;
        return takeQuotient(uint32_t{1} << bits);
    }
    /// A number below `total` (1..65536).
    uint32_t getUniform(uint32_t total)
    {
        normalise();
        m_range /= total;
        return takeQuotient(total);
    }

private:
    static constexpr uint32_t bottom = 0x00800000;

    // The coder's state has 31 bits: each byte of the stream is used with an offset of one bit.
    void normalise()
    {
        while (m_range <= bottom) {
            const uint32_t byte = m_bytes.next();
            m_low = (m_low << 8) | ((m_lastByte << 7) & 0x80) | (byte >> 1);
            m_lastByte = byte;
            m_range <<= 8;
        }
    }
    uint32_t takeQuotient(uint32_t total)
    {
        const uint32_t value = m_low / m_range;
        if (value >= total) {
            throwDamaged();
        }
        m_low -= m_range * value;
        return value;
    }
    [[noreturn]] static void throwDamaged()
    {
        throw MacError(ErrorNumber::DecodingFrame, "a frame is damaged");
    }

    FrameBytes &m_bytes;
    uint32_t m_low = 0;
    uint32_t m_range = 128;
    uint32_t m_lastByte = 0;
};

} // namespace kruv::mac
