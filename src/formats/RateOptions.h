// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

#include <QtGlobal>

/// What the lossy formats' settings have in common.
namespace kruv::RateOptions {

inline constexpr OptionChoice cbr{"cbr", "CBR"};
inline constexpr OptionChoice abr{"abr", "ABR"};
inline constexpr OptionChoice vbr{"vbr", "VBR"};
inline constexpr OptionChoice vbrConstrained{"vbr-constrained", "VBR Constrained"};

/// Bit rates in kbit/s that are proposed.
inline constexpr OptionChoice usualRates[] = {{"96", "96"},   {"112", "112"}, {"128", "128"}, {"160", "160"},
                                              {"192", "192"}, {"224", "224"}, {"256", "256"}, {"320", "320"}};

} // namespace kruv::RateOptions
