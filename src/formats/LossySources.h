// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/TranscodeTask.h"

#include <span>

/// How the lossy encoders that take no source but WAV, or few others, get theirs.
namespace kruv::LossySources {

/// For AAC and HE-AAC.
extern const std::span<const SourceRule> aac;
extern const std::span<const SourceRule> opus;

} // namespace kruv::LossySources
