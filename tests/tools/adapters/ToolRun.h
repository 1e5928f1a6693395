// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ScratchFolder.h"

#include <cstdint>
#include <sys/types.h>

namespace kruv::adapters {

/// How a tool ended and what it printed on both streams together.
struct ToolResult
{
    int status = -1; // exit status, or 128 + signal
    std::string output;
};

/// A tool of the resources folder under way, its standard input empty.
class ToolRun
{
public:
    /// `tool` is a name in the resources folder, or a full path.
    explicit ToolRun(const std::string &tool, const Arguments &arguments,
                     const std::string &workingFolder = "/");

    /// Waits until the printed text holds `text`; false when the tool ended without it.
    bool waitForText(const std::string &text);
    void send(int signal) const;
    ToolResult finish();

private:
    bool readMore();

    pid_t m_child = -1;
    int m_pipe = -1;
    std::string m_output;
};

ToolResult runTool(const std::string &tool, const Arguments &arguments,
                   const std::string &workingFolder = "/");

/// The resources folder under test.
std::string resourcesFolder();

/// Whether the build's resources folder can run the tool (it, or the program behind its adapter, is
/// installed).
bool haveTool(const std::string &tool);

/// Interleaved PCM made for tests.
struct TestAudio
{
    unsigned channels = 2;
    unsigned bits = 16;
    unsigned rate = 44100;
    std::string samples; // little-endian

    /// `frames` of noise that a coder can't predict well, the same for the same `seed`.
    static TestAudio noise(std::size_t frames, unsigned channels, unsigned bits, unsigned seed = 1);
};

/// Writes a WAV, with the extensible header where it is usual: above 16 bits or two channels.
void writeWav(const std::string &path, const TestAudio &audio);

/// The PCM in a WAV, AIFF or FLAC file, little-endian, whatever its name is; "unreadable" when there is none.
std::string pcmOf(const std::string &path);

std::string contentOf(const std::string &path);
void writeFile(const std::string &path, const std::string &content);

/// Names in a folder, hidden ones too.
std::vector<std::string> namesIn(const std::string &folder);

} // namespace kruv::adapters
