// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <cstring>

namespace kruv::tools {

/// Whether the four letters that name a chunk of RIFF or IFF stand at `bytes`.
inline bool isId(const std::uint8_t *bytes, const char *id)
{
    return std::memcmp(bytes, id, 4) == 0;
}

} // namespace kruv::tools
