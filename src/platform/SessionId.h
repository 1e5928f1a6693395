// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

/// A number that stays the same for the whole login session: the process session's id.
std::uint32_t sessionId();

} // namespace kruv
