// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RangeDecoder.h"
#include "RangeEncoder.h"
#include "SymbolTable.h"

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

/// Codes residuals of one channel as version 3.99 does.
class ResidualEncoder
{
public:
    void put(RangeEncoder &coder, int32_t residual)
    {
        const uint32_t folded = fold(residual);
        const uint32_t pivot = m_mean.pivot();
        const uint32_t quotient = folded / pivot;
        const uint32_t remainder = folded % pivot;
        m_mean.update(folded);
        const uint32_t symbol = std::min(quotient, SymbolTable::escape);
        coder.putSymbol(quotientTable.start(symbol), quotientTable.width(symbol));
        if (symbol == SymbolTable::escape) {
            coder.putBits(quotient >> 16, 16);
            coder.putBits(quotient & 0xFFFF, 16);
        }
        const int shift = remainderShift(pivot);
        if (shift == 0) {
            coder.putUniform(remainder, pivot);
        } else {
            coder.putUniform(remainder >> shift, (pivot >> shift) + 1);
            coder.putUniform(remainder & ((1U << shift) - 1), 1U << shift);
        }
    }

private:
    ResidualMean m_mean;
};

/// Decodes residuals of one channel, of any version from 3.95 on.
class ResidualDecoder
{
public:
    int32_t getQuotientCoded(RangeDecoder &coder)
    {
        const uint32_t pivot = m_mean.pivot();
        uint32_t quotient = coder.getSymbol(quotientTable);
        if (quotient == SymbolTable::escape) {
            quotient = coder.getBits(16) << 16;
            quotient |= coder.getBits(16);
        }
        const int shift = remainderShift(pivot);
        uint32_t remainder = 0;
        if (shift == 0) {
            remainder = coder.getUniform(pivot);
        } else {
            remainder = coder.getUniform((pivot >> shift) + 1) << shift;
            remainder |= coder.getUniform(1U << shift);
        }
        const uint32_t folded = quotient * pivot + remainder;
        m_mean.update(folded);
        return unfold(folded);
    }

    int32_t getHighBitsCoded(RangeDecoder &coder)
    {
        uint32_t high = coder.getSymbol(highBitsTable);
        int bits = std::max(m_bits - 1, 0);
        if (high == SymbolTable::escape) {
            bits = static_cast<int>(coder.getBits(5));
            high = 0;
        }
        uint32_t folded = coder.getBits(std::min(bits, 16));
        if (bits > 16)
            folded |= coder.getBits(bits - 16) << 16;
        folded += high << bits;
        m_mean.update(folded);
        if (m_bits > 0 && m_mean.sum() < 1U << (m_bits + 4))
            --m_bits;
        else if (m_bits < 27 && m_mean.sum() >= 1U << (m_bits + 5))
            ++m_bits;
        return unfold(folded);
    }

private:
    ResidualMean m_mean;
    int m_bits = 10;
};

} // namespace kruv::mac
