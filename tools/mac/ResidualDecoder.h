// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RangeDecoder.h"
#include "ResidualMean.h"
#include "SymbolTable.h"

#include <algorithm>
#include <cstdint>

namespace kruv::mac {

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
        if (bits > 16) {
            folded |= coder.getBits(bits - 16) << 16;
        }
        folded += high << bits;
        m_mean.update(folded);
        if (m_bits > 0 && m_mean.sum() < 1U << (m_bits + 4)) {
            --m_bits;
        } else if (m_bits < 27 && m_mean.sum() >= 1U << (m_bits + 5)) {
            ++m_bits;
        }
        return unfold(folded);
    }

private:
    ResidualMean m_mean;
    int m_bits = 10;
};

} // namespace kruv::mac
