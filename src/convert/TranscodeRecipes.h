// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "convert/TranscodeTask.h"

/// What is peculiar to each conversion to a lossless format.
namespace kruv::TranscodeRecipes {

extern const TranscodeTask::Recipe toWavpack;
extern const TranscodeTask::Recipe toTTA;
extern const TranscodeTask::Recipe toApe;
/// The encoder runs in this process.
extern const TranscodeTask::Recipe toAppleLossless;
extern const TranscodeTask::Recipe appleLosslessToFlac;
extern const TranscodeTask::Recipe appleLosslessToWavpack;
extern const TranscodeTask::Recipe appleLosslessToTTA;
extern const TranscodeTask::Recipe appleLosslessToApe;
extern const TranscodeTask::Recipe wavpackToFlac;

} // namespace kruv::TranscodeRecipes
