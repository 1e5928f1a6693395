// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ToolRun.h"

#include "common/LittleEndian.h"

#include <algorithm>
#include <csignal>
#include <fstream>
#include <sstream>
#include <unistd.h>

namespace kruv::adapters {

using namespace tools::test;

namespace {

std::string text(const Bytes &bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::vector<pid_t> processesOfSession(pid_t session)
{
    std::vector<pid_t> found;
    for (const auto &name : namesIn("/proc")) {
        const auto stat =
            isdigit(static_cast<unsigned char>(name[0])) ? contentOf("/proc/" + name + "/stat") : "";
        const auto afterName = stat.rfind(')');
        char state = 0;
        long parent = 0;
        long group = 0;
        long itsSession = 0;
        if (afterName != std::string::npos &&
            sscanf(stat.c_str() + afterName, ") %c %ld %ld %ld", &state, &parent, &group, &itsSession) == 4 &&
            itsSession == session && state != 'Z') {
            found.push_back(static_cast<pid_t>(std::stol(name)));
        }
    }
    return found;
}

} // namespace

ToolResult runTool(const std::string &line, const Arguments &more, const std::string &workingFolder)
{
    Arguments words{"-c", R"(PATH="$PATH:$KRUV_RESOURCES"; cd "$0" && exec "$@" 2>&1)", workingFolder};
    std::istringstream given(line);
    for (std::string word; given >> word;) {
        const bool bareTool = words.size() == 3 && word.front() != '/';
        words.push_back(bareTool ? std::string(getenv("KRUV_RESOURCES")) + "/" + word : word);
    }
    words.insert(words.end(), more.begin(), more.end());
    const auto result = run("/bin/sh", words);
    return {result.status, text(result.output)};
}

bool haveTools(const Arguments &tools)
{
    return std::all_of(tools.begin(), tools.end(),
                       [](const std::string &tool) { return runTool(tool, {}).status != 127; });
}

TestAudio TestAudio::noise(std::size_t frames, std::uint16_t channels, std::uint16_t bits, unsigned seed)
{
    const auto all = pcm(Signal::Noise, {44100, channels, bits}, frames + std::size_t(100) * seed);
    return {channels, bits, text(all).substr(std::size_t{100} * seed * channels * bits / 8)};
}

void writeWav(const std::string &path, const TestAudio &audio)
{
    Bytes file = wav({44100, audio.channels, audio.bits}, {audio.samples.begin(), audio.samples.end()});
    if (audio.bits > 16 || audio.channels > 2) {
        Bytes extension = fromHex("16000000030000000100000000001000800000AA00389B71");
        tools::writeLe16(&extension[2], audio.bits);
        extension[4] = audio.channels == 6 ? 0x3F : 0x3;
        file.insert(file.begin() + 36, extension.begin(), extension.end());
        tools::writeLe32(&file[4], static_cast<std::uint32_t>(file.size() - 8));
        tools::writeLe32(&file[16], 40);
        tools::writeLe16(&file[20], 0xFFFE);
    }
    writeFile(path, text(file));
}

std::string pcmOf(const std::string &path, unsigned bits)
{
    return text(decodeWithFfmpeg(path, bits == 16 ? "s16le" : "s24le"));
}

std::string contentOf(const std::string &path)
{
    return text(readFile(path));
}

void writeFile(const std::string &path, const std::string &content)
{
    std::ofstream(path, std::ios::binary) << content;
}

std::vector<pid_t> processesThatStay(pid_t session)
{
    std::vector<pid_t> left = processesOfSession(session);
    for (int look = 0; look < 250 && !left.empty(); ++look) {
        usleep(20'000);
        left = processesOfSession(session);
    }
    for (const pid_t process : left) {
        kill(process, SIGKILL);
    }
    return left;
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
