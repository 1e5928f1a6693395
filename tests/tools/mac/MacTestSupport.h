// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace kruv::mac::test {

using Bytes = std::vector<uint8_t>;

/// A folder that removes itself.
class TemporaryFolder
{
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

    std::string operator/(const std::string &name) const { return (m_path / name).string(); }
    const std::filesystem::path &path() const { return m_path; }
    /// Names of all entries, hidden ones too, sorted.
    std::vector<std::string> entries() const;

private:
    std::filesystem::path m_path;
};

Bytes readFile(const std::string &path);
void writeFile(const std::string &path, const Bytes &bytes);

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
};

enum class Signal { Silence, Noise, Square, EqualChannels, Impulses, Sweep, Music, Extremes, OneSilent };

/// `blocks` blocks of WAV audio, the same on every run.
Bytes makeAudio(Signal signal, Format format, unsigned blocks);
Bytes operator+(Bytes left, const Bytes &right);
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
