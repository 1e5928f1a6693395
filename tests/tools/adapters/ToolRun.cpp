// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ToolRun.h"

#include "WavHeader.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

std::string number(std::uint32_t value, int bytes)
{
    std::string text;
    for (int i = 0; i < bytes; ++i, value >>= 8) {
        text += static_cast<char>(value & 0xFF);
    }
    return text;
}

} // namespace

std::string resourcesFolder()
{
    const char *folder = getenv("KRUV_RESOURCES");
    if (!folder) {
        throw std::runtime_error("KRUV_RESOURCES must name the resources folder");
    }
    return folder;
}

ToolRun::ToolRun(const std::string &tool, const Arguments &arguments, const std::string &workingFolder)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    const auto path = tool.front() == '/' ? tool : resourcesFolder() + "/" + tool;
    const auto searchPath = std::string(getenv("PATH")) + ":" + resourcesFolder();
    std::vector<char *> words{const_cast<char *>(path.c_str())};
    for (const auto &argument : arguments) {
        words.push_back(const_cast<char *>(argument.c_str()));
    }
    words.push_back(nullptr);
    m_child = fork();
    if (m_child == 0) {
        dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
        dup2(ends[1], STDOUT_FILENO);
        dup2(ends[1], STDERR_FILENO);
        setenv("PATH", searchPath.c_str(), 1);
        if (chdir(workingFolder.c_str()) == 0) {
            execv(path.c_str(), words.data());
        }
        _exit(127);
    }
    close(ends[1]);
    m_pipe = ends[0];
}

bool ToolRun::readMore()
{
    char buffer[65536];
    const auto count = read(m_pipe, buffer, sizeof buffer);
    if (count > 0) {
        m_output.append(buffer, static_cast<std::size_t>(count));
    }
    return count > 0;
}

bool ToolRun::waitForText(const std::string &text)
{
    while (m_output.find(text) == std::string::npos) {
        if (!readMore()) {
            return false;
        }
    }
    return true;
}

void ToolRun::send(int signal) const
{
    kill(m_child, signal);
}

ToolResult ToolRun::finish()
{
    while (readMore()) {
    }
    close(m_pipe);
    int status = 0;
    waitpid(m_child, &status, 0);
    return {WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status), m_output};
}

ToolResult runTool(const std::string &tool, const Arguments &arguments, const std::string &workingFolder)
{
    return ToolRun(tool, arguments, workingFolder).finish();
}

bool haveTool(const std::string &tool)
{
    return runTool(tool, {}).status != 127;
}

TestAudio TestAudio::noise(std::size_t frames, unsigned channels, unsigned bits, unsigned seed)
{
    TestAudio audio{channels, bits, 44100, {}};
    std::mt19937 random(seed);
    audio.samples.reserve(frames * channels * bits / 8);
    for (std::size_t i = 0; i < frames * channels; ++i) {
        audio.samples += number(static_cast<std::uint32_t>(random() >> 2), static_cast<int>(bits / 8));
    }
    return audio;
}

void writeWav(const std::string &path, const TestAudio &audio)
{
    const auto frameSize = audio.channels * audio.bits / 8;
    const auto dataSize = static_cast<std::uint32_t>(audio.samples.size());
    auto format = number(1, 2) + number(audio.channels, 2) + number(audio.rate, 4) +
                  number(audio.rate * frameSize, 4) + number(frameSize, 2) + number(audio.bits, 2);
    if (audio.bits > 16 || audio.channels > 2) {
        const auto mask = audio.channels == 6 ? 0x3FU : 0x3U;
        format.replace(0, 2, number(0xFFFE, 2));
        format += number(22, 2) + number(audio.bits, 2) + number(mask, 4) +
                  std::string("\x01\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16);
    }
    const auto formatSize = static_cast<std::uint32_t>(format.size());
    writeFile(path, "RIFF" + number(20 + formatSize + dataSize, 4) + "WAVEfmt " + number(formatSize, 4) +
                        format + "data" + number(dataSize, 4) + audio.samples);
}

std::string pcmOf(const std::string &path)
{
    const auto content = contentOf(path);
    if (const auto header = WavHeader::parse(content)) {
        return content.substr(header->data);
    }
    if (content.starts_with("fLaC")) {
        const auto raw = path + ".raw";
        const auto result = runTool(
            "flac", {"-d", "-s", "--force-raw-format", "--endian=little", "--sign=signed", path, "-o", raw});
        const auto samples = contentOf(raw);
        std::filesystem::remove(raw);
        return result.status == 0 ? samples : "unreadable";
    }
    const auto data = content.find("SSND");
    if (!content.starts_with("FORM") || data == std::string::npos) {
        return "unreadable";
    }
    // Big-endian samples, behind the chunk's head, offset and block size; their width stands in the COMM
    // chunk.
    auto samples = content.substr(data + 16);
    const auto width = static_cast<std::size_t>(content[content.find("COMM") + 15]) / 8;
    for (std::size_t at = 0; at + width <= samples.size(); at += width) {
        std::reverse(samples.begin() + static_cast<std::ptrdiff_t>(at),
                     samples.begin() + static_cast<std::ptrdiff_t>(at + width));
    }
    return samples;
}

std::string contentOf(const std::string &path)
{
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    return content.str();
}

void writeFile(const std::string &path, const std::string &content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::vector<std::string> namesIn(const std::string &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace kruv::adapters
