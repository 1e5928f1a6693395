// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/Crc32.h"

#include <zlib.h>

namespace kruv::tools {

std::uint32_t crc32(std::span<const std::uint8_t> bytes, std::uint32_t previous)
{
    return static_cast<std::uint32_t>(::crc32_z(previous, bytes.data(), bytes.size()));
}

} // namespace kruv::tools
