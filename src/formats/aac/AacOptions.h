// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

/// The settings of AAC.
namespace kruv::AacOptions {

extern const FormatOption mode;
/// kbit/s
extern const FormatOption bitRate;
/// 0 to 127 (best), at variable rate
extern const FormatOption quality;

} // namespace kruv::AacOptions
