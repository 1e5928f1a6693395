// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MacTestSupport.h"

#include "common/MemorySink.h"
#include "mac/Compress.h"
#include "mac/Decompress.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/wait.h>

namespace kruv::mac::test {

std::string shellWord(const std::string &word)
{
    std::string result = "'";
    for (const char c : word) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

Outcome runShell(const std::string &command)
{
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    const std::string err = folder.path("err");
    const int status =
        std::system(("{ " + command + "; } >" + shellWord(out) + " 2>" + shellWord(err)).c_str());
    const auto text = [](const Bytes &bytes) { return std::string(bytes.begin(), bytes.end()); };
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text(readFile(out)), text(readFile(err))};
}

std::string macProgram()
{
    const char *resources = std::getenv("KRUV_RESOURCES");
    if (!resources) {
        throw std::runtime_error("KRUV_RESOURCES must name the folder of the tools");
    }
    return shellWord(std::string(resources) + "/mac");
}

tools::WavFormat Format::wav() const
{
    return {44100, static_cast<uint16_t>(channels), static_cast<uint16_t>(bits)};
}

Bytes makeAudio(Signal signal, Format format, unsigned blocks)
{
    return pcm(signal, format.wav(), blocks);
}

Bytes makeExtremes(Format format, unsigned blocks)
{
    Bytes audio = makeAudio(Signal::Noise, format, blocks);
    const std::size_t width = format.bits / 8;
    for (std::size_t at = 0; at < audio.size(); at += width) {
        const bool high = audio[at] & 1;
        for (std::size_t i = 0; i < width; ++i) {
            audio[at + i] = high ? 0xFF : 0;
        }
        if (format.bits > 8) {
            audio[at + width - 1] = high ? 0x7F : 0x80;
        }
    }
    return audio;
}

Bytes makeOneSilent(Format format, unsigned blocks)
{
    Bytes audio = makeAudio(Signal::Noise, format, blocks);
    for (std::size_t at = 0; at < audio.size(); ++at) {
        if (at % format.blockBytes() >= format.bits / 8) {
            audio[at] = format.bits == 8 ? 128 : 0;
        }
    }
    return audio;
}

Bytes bytesOf(const std::string &text)
{
    return Bytes(text.begin(), text.end());
}

Bytes wavHeader(Format format, uint32_t dataSize)
{
    const auto header = format.wav().header(dataSize);
    return Bytes(header.begin(), header.end());
}

Bytes wavFile(Format format, const Bytes &audio)
{
    return wav(format.wav(), audio);
}

Bytes decodedByFfmpeg(const std::string &path, Format format)
{
    return decodeWithFfmpeg(path, rawFormatFor(format.wav()));
}

std::string compressed(const TemporaryFolder &folder, const Bytes &wav, unsigned level)
{
    folder.write("in.wav", wav);
    TimedProgress silent(false);
    compress(folder.path("in.wav"), folder.path("out.ape"), *findLevel(level), silent);
    return folder.path("out.ape");
}

Bytes decompressed(const Bytes &ape)
{
    tools::MemorySink sink;
    TimedProgress silent(false);
    decompress(RandomInput(std::span<const uint8_t>(ape)), sink, silent);
    return sink.take();
}

} // namespace kruv::mac::test
