// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/TestProcess.h"

namespace kruv::mac::test {

using namespace tools::test;

/// What a finished command left; `status` is as the shell sees it (128 + N for a signal).
struct Outcome
{
    int status = -1;
    std::string out;
    std::string err;
};

/// Runs a command line of the shell.
Outcome runShell(const std::string &command);
/// The word as one word of the shell's.
std::string shellWord(const std::string &word);
/// The program under test, quoted.
std::string macProgram();

/// The shape of a piece of audio.
struct Format
{
    unsigned bits;
    unsigned channels;

    unsigned blockBytes() const { return bits / 8 * channels; }
    tools::WavFormat wav() const;
};

/// The same on every run.
Bytes makeAudio(Signal signal, Format format, unsigned blocks);
/// The two ends of the scale by chance.
Bytes makeExtremes(Format format, unsigned blocks);
/// Noise in the first channel only.
Bytes makeOneSilent(Format format, unsigned blocks);
Bytes bytesOf(const std::string &text);

/// A WAV file with the canonical header; `dataSize` other than the audio's makes it lie.
Bytes wavFile(Format format, const Bytes &audio);
Bytes wavHeader(Format format, uint32_t dataSize);

/// The audio as ffmpeg decodes the file, which it also checks against the frames' checksums.
Bytes decodedByFfmpeg(const std::string &path, Format format);

/// Compresses a WAV image in `folder`; returns the path of the .ape file.
std::string compressed(const TemporaryFolder &folder, const Bytes &wav, unsigned level);
/// Decompresses to memory; throws MacError.
Bytes decompressed(const Bytes &ape);

} // namespace kruv::mac::test
