// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RangeEncoder.h"
#include "ResidualMean.h"
#include "SymbolTable.h"

#include <algorithm>
#include <cstdint>

namespace kruv::mac {

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

} // namespace kruv::mac
