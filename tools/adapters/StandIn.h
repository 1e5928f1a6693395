// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kruv::adapters {

/// How the shntool program takes a source file.
enum class SourceKind {
    Direct,        // as it is
    ExtensibleWav, // refused: it knows the plain PCM tag only, and runs no decoder on WAVs
    UnusualPcm,    // WAVs without a stated length, with an odd chunk before the audio, and of 64-bit sizes
    WavPack, // refused when written by version 5: it looks at the file's version before it runs the decoder
};

SourceKind sourceKind(const std::string &path);

/// A small file that stands in for a source which shntool refuses. It has the source's size (as a hole), so
/// that ratios come out right.
/// - As a stream: a header that makes shntool run the decoder of a format (WavPack or FLAC), and behind it
/// the name of
///   the source, where our decoder finds it.
/// - As a header: the source's WAV header with the plain tag and a hole for the audio, for the modes that
/// only look at
///   headers. The report then says "wav", and nothing is copied.
/// False when it can't be written, errno set.
bool writeStreamStandIn(const std::string &path, const std::string &source, SourceKind kind);
bool writeHeaderStandIn(const std::string &path, const std::string &source);

/// The source behind a stream stand-in; `path` itself when it is none.
std::string behindStandIn(const std::string &path);

} // namespace kruv::adapters
