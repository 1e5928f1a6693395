// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kruv::tools {
class InputStream;
class OutputFile;
} // namespace kruv::tools

namespace kruv::ttaenc {

/// Called after each frame with the bytes of audio done and their number in all (0 where unknown).
using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

/// Encodes a WAV file of 8 to 24 bit. Its chunks other than the audio are not kept. The input stands at the
/// RIFF header. Where the length is known and the output can be rewritten, frames go there at once; otherwise
/// they wait in a temporary file, because the table of their sizes comes first. Returns a warning to show, or
/// an empty text.
std::string encode(tools::InputStream &input, tools::OutputFile &output, const Progress &progress);

} // namespace kruv::ttaenc
