// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kruv::tools {
class ByteSink;
class InputStream;
} // namespace kruv::tools

namespace kruv::shorten {

/// Encodes a WAV file of 8 or 16 bit and up to eight channels so that decoding gives the same file back, byte
/// for byte; of RF64, BW64 and Wave64 files, a plain RIFF file with their audio. ToolError for anything else.
/// Returns a warning to show, or an empty text.
std::string encodeWav(tools::InputStream &input, tools::ByteSink &output);

} // namespace kruv::shorten
