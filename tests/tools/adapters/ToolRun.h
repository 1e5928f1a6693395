// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "common/TestProcess.h"

#include <sys/types.h>
#include <vector>

namespace kruv::adapters {

/// How a tool ended and what it printed on both streams together.
struct ToolResult
{
    int status = -1; // exit status, or 128 + signal
    std::string output;
};

/// Runs a tool of the resources folder, or one given with its full path. `line` is the tool and its first
/// arguments, split at blanks; `more` are arguments that may hold blanks.
ToolResult runTool(const std::string &line, const Arguments &more, const std::string &workingFolder = "/");

/// Whether the build's resources folder can run the tools (they, or the programs behind their adapters, are
/// installed).
bool haveTools(const Arguments &tools);

/// Interleaved PCM made for tests, of 44100 Hz.
struct TestAudio
{
    std::uint16_t channels = 2;
    std::uint16_t bits = 16;
    std::string samples; // little-endian

    /// `frames` of noise that a coder can't predict well, the same for the same `seed`.
    static TestAudio noise(std::size_t frames, std::uint16_t channels, std::uint16_t bits, unsigned seed = 1);
};

/// Writes a WAV, with the extensible header where it is usual: above 16 bits or two channels.
void writeWav(const std::string &path, const TestAudio &audio);
/// The PCM in a file, little-endian, as an independent decoder gives it.
std::string pcmOf(const std::string &path, unsigned bits = 16);
std::string contentOf(const std::string &path);
void writeFile(const std::string &path, const std::string &content);
/// Processes of a session that have not ended, nor end within seconds: one that was killed takes a moment.
/// Ends them.
std::vector<pid_t> processesThatStay(pid_t session);
/// Names in a folder, hidden ones too.
std::vector<std::string> namesIn(const std::string &folder);

} // namespace kruv::adapters
