// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::tools {

/// CRC-32 as of Ethernet, ZIP and PNG (reflected polynomial 0xEDB88320; "123456789" gives 0xCBF43926).
/// previous is the result over the bytes before, 0 at the start.
std::uint32_t crc32(std::span<const std::uint8_t> bytes, std::uint32_t previous = 0);

} // namespace kruv::tools
