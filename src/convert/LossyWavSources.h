// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeTask.h"

#include <span>

/// Which sources each lossy encoder gets as a temporary WAV, and how that is made.
namespace kruv::LossyWavSources {

extern const std::span<const TranscodeTask::WavSource> aac;
extern const std::span<const TranscodeTask::WavSource> heAac;
extern const std::span<const TranscodeTask::WavSource> opus;

} // namespace kruv::LossyWavSources
