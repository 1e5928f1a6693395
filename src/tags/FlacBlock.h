// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kruv {

/// Bytes that a metadata block of FLAC can hold: its length has 24 bits (RFC 9639, section 8.1).
inline constexpr long longestFlacBlock = 0xFFFFFF;

} // namespace kruv
