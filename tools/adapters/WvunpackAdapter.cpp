// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "WvunpackAdapter.h"

#include "File.h"
#include "FlacAdapter.h"

#include <algorithm>
#include <array>
#include <strings.h>

namespace kruv::adapters {

namespace {

bool isWavOutput(const std::string &name)
{
    return name == "-" || (name.size() >= 4 && strcasecmp(name.c_str() + name.size() - 4, ".wav") == 0);
}

// Options that choose a container, or make the run write no audio.
bool settlesTheFormat(const std::string &argument)
{
    static constexpr std::array others{"--wav",    "-w",     "--raw",    "-r",  "--raw-pcm", "--aif",
                                       "--aif-le", "--w64",  "-v",       "-vv", "--caf-be",  "--caf-le",
                                       "--dff",    "-s",     "-ss",      "-c",  "-n",        "--dsf",
                                       "--dsdiff", "--help", "--version"};
    return std::find(others.begin(), others.end(), argument) != others.end();
}

} // namespace

Arguments wvunpackArguments(Arguments arguments, const std::function<bool(const std::string &)> &exists,
                            const std::function<bool(const std::string &)> &madeFromOther)
{
    guardDashNames(arguments, exists);
    if (std::any_of(arguments.begin(), arguments.end(), settlesTheFormat)) {
        return arguments;
    }
    bool wavOutput = false;
    bool foreignSource = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "-o" && i + 1 < arguments.size()) {
            wavOutput = isWavOutput(arguments[++i]);
        } else if (arguments[i] == "-") {
            wavOutput = true; // the older spelling of standard output, without -o
        } else if (!arguments[i].empty() && arguments[i].front() != '-') {
            foreignSource = foreignSource || madeFromOther(arguments[i]);
        }
    }
    if (wavOutput && foreignSource) {
        arguments.insert(arguments.begin(), "--wav");
    }
    return arguments;
}

bool wavPackMadeFromOther(const std::string &path)
{
    // The first block opens with 32 bytes of header; its sub-blocks follow: an id, a length in 16-bit words
    // (one byte, or three when the id has the "large" bit), the data. Id 0x28 names the original container's
    // extension.
    constexpr std::size_t headerSize = 32;
    constexpr unsigned largeBit = 0x80;
    constexpr unsigned extensionId = 0x28;
    const std::string block = readStart(path, 4096);
    if (block.compare(0, 4, "wvpk") != 0) {
        return false;
    }
    const auto byte = [&block](std::size_t at) { return static_cast<unsigned char>(block[at]); };
    std::size_t at = headerSize;
    while (at + 4 <= block.size()) {
        const unsigned id = byte(at);
        std::size_t words = byte(at + 1);
        std::size_t head = 2;
        if (id & largeBit) {
            words |= static_cast<std::size_t>(byte(at + 2)) << 8 | static_cast<std::size_t>(byte(at + 3))
                                                                       << 16;
            head = 4;
        }
        if ((id & 0x3F) == extensionId) {
            return block.compare(at + head, 3, "wav") != 0;
        }
        at += head + 2 * words;
    }
    return false;
}

} // namespace kruv::adapters
