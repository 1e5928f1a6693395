// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Level.h"
#include "TimedProgress.h"

#include <string>

namespace kruv::mac {

/// Encodes a WAV file ("-": standard input) to a new .ape file, keeping every byte around the audio. Only
/// when the sizes in the WAV header are not what there is (a stream of unknown length), and of RF64, BW64 and
/// Wave64 files, the header is left out and decoders make one. Throws MacError.
void compress(const std::string &inputPath, const std::string &outputPath, const Level &level,
              TimedProgress &progress);

} // namespace kruv::mac
