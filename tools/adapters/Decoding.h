// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ToolFinder.h"

namespace kruv::adapters {

/// Writes the audio of `file` to standard output, as a WAV with a plain PCM header that states its length.
/// Whether the file is sound goes into the SoundReport, where its end was reached. `file` may be a stand-in;
/// then the source behind it counts. Returns an exit status.
int decode(const std::string &format, const std::string &file, const ToolFinder &finder);

/// The start of `file` as a WAV: its header and a little audio, whatever the container is. Empty when nothing
/// can decode it.
std::string decodedStart(const std::string &file, const ToolFinder &finder);

/// Whether `file` is read through a decoder, by its content.
bool isDecoded(const std::string &file);

/// Decodes `file` to its end for nothing but whether that goes well.
bool decodesWell(const std::string &file, const ToolFinder &finder);

/// The decoder that one of `files` needs and that is nowhere; empty where none is missing.
std::string missingDecoder(const Arguments &files, const ToolFinder &finder);

/// What has to run to decode `file`. The first word is the tool.
Arguments decoderCall(const std::string &format, const std::string &file, bool madeFromOther);

/// Fills in the length of a WAV stream whose header, `start`, leaves it open.
std::string withLength(std::string start, std::uint64_t audioBytes);

} // namespace kruv::adapters
