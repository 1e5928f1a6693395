// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

/// The settings of HE-AAC.
namespace kruv::HeAacOptions {

/// kbit/s
extern const FormatOption bitRate;

} // namespace kruv::HeAacOptions
