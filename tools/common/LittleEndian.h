// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace kruv::tools {

/// Numbers stored low byte first. The pointer need not be aligned.
inline std::uint16_t readLe16(const std::uint8_t *p)
{
    return static_cast<std::uint16_t>(p[0] | p[1] << 8);
}

inline std::uint32_t readLe32(const std::uint8_t *p)
{
    return static_cast<std::uint32_t>(p[0]) | static_cast<std::uint32_t>(p[1]) << 8 |
           static_cast<std::uint32_t>(p[2]) << 16 | static_cast<std::uint32_t>(p[3]) << 24;
}

inline std::uint64_t readLe64(const std::uint8_t *p)
{
    return readLe32(p) | std::uint64_t{readLe32(p + 4)} << 32;
}

inline void writeLe16(std::uint8_t *p, std::uint32_t value)
{
    p[0] = static_cast<std::uint8_t>(value);
    p[1] = static_cast<std::uint8_t>(value >> 8);
}

inline void writeLe32(std::uint8_t *p, std::uint32_t value)
{
    writeLe16(p, value & 0xFFFF);
    writeLe16(p + 2, value >> 16);
}

} // namespace kruv::tools
