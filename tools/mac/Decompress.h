// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RandomInput.h"
#include "TimedProgress.h"
#include "common/ByteSink.h"

#include <string>

namespace kruv::mac {

/// Decodes an .ape file ("-": standard input) to the WAV file ("-": standard output) it was made from, byte
/// for byte. Stops at the first damage. Throws MacError.
void decompress(const std::string &inputPath, const std::string &outputPath, TimedProgress &progress);

/// The same, from any input to any sink.
void decompress(const RandomInput &input, tools::ByteSink &output, TimedProgress &progress);

/// Decodes an .ape file to nowhere and compares all checksums. Throws MacError.
void verify(const std::string &inputPath, TimedProgress &progress);

} // namespace kruv::mac
