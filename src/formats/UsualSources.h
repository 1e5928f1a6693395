// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

#include <span>

namespace kruv {

/// How the encoders that read nothing but WAV get their sources.
extern const std::span<const SourceRule> usualSources;

} // namespace kruv
