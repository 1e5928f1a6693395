// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"

namespace kruv {

#define FORMAT(name) extern const Format name##Format;
#include "formats/Records.def"
#undef FORMAT

} // namespace kruv
