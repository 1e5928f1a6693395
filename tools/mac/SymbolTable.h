// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace kruv::mac {

/// A fixed model of 64 symbols whose frequencies sum up to 65536: 21 given ones, then 1 each.
class SymbolTable
{
public:
    static constexpr uint32_t escape = 63;

    constexpr explicit SymbolTable(const std::array<uint16_t, 21> &widths)
    {
        for (std::size_t symbol = 0; symbol < 64; ++symbol) {
            m_starts[symbol + 1] = m_starts[symbol] + (symbol < widths.size() ? widths[symbol] : 1U);
        }
        std::size_t symbol = 0;
        for (uint32_t slot = 0; slot < m_firstSymbols.size(); ++slot) {
            while (m_starts[symbol + 1] <= slot << slotBits) {
                ++symbol;
            }
            m_firstSymbols[slot] = static_cast<uint8_t>(symbol);
        }
    }

    constexpr uint32_t start(uint32_t symbol) const { return m_starts[symbol]; }
    constexpr uint32_t width(uint32_t symbol) const { return m_starts[symbol + 1] - m_starts[symbol]; }
    /// The symbol that holds this cumulative frequency (0..65535).
    constexpr uint32_t find(uint32_t frequency) const
    {
        uint32_t symbol = m_firstSymbols[frequency >> slotBits];
        while (m_starts[symbol + 1] <= frequency) {
            ++symbol;
        }
        return symbol;
    }

private:
    static constexpr uint32_t slotBits = 4;
    static constexpr std::size_t slots = 65536U >> slotBits;

    std::array<uint32_t, 65> m_starts{};
    std::array<uint8_t, slots> m_firstSymbols{};
};

/// Since version 3.99 a symbol is the quotient of the residual by a running mean.
inline constexpr SymbolTable quotientTable({19578, 16582, 12257, 7906, 4576, 2366, 1170, 536, 261, 119, 65,
                                            31,    19,    10,    6,    3,    3,    2,    1,   1,   1});
/// Before, it was the residual's high bits.
inline constexpr SymbolTable highBitsTable({14824, 13400, 11124, 8507, 6139, 4177, 2755, 1756, 1104, 677, 415,
                                            248,   150,   89,    54,   31,   19,   11,   7,    4,    2});

} // namespace kruv::mac
