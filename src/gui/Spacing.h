// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kruv {

/// Pixels between a window's edge and what it shows.
inline constexpr int outerMargin = 12;

} // namespace kruv
