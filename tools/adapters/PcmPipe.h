// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ToolFinder.h"

namespace kruv::adapters {

/// The words behind this program's own name, as children of shntool call it:
/// - `decode FORMAT FILE`: the audio of FILE as a WAV with a plain PCM header, on standard output. FILE may
/// be a
///   stand-in; with FORMAT "flac" or "wv" the source behind it counts.
/// - `encode ENCODER ARGUMENT...`: runs the encoder with standard input as it is, but an extensible header
/// where the
///   channels need one.
/// - `store FILE`: standard input into FILE, with the same header.
/// - `store-aiff FILE`: standard input into FILE as AIFF.
/// Returns the exit status; where another program finishes the work it does not return.
int runPcmPipe(const Arguments &arguments, const ToolFinder &finder);

} // namespace kruv::adapters
