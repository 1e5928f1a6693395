// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MacTestSupport.h"

#include "common/LittleEndian.h"
#include "common/MemorySink.h"
#include "mac/Compress.h"
#include "mac/Decompress.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <numbers>
#include <random>
#include <sys/wait.h>

namespace kruv::mac::test {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder()
{
    std::string pattern = (fs::temp_directory_path() / "mac test XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no temporary folder");
    m_path = pattern;
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::vector<std::string> TemporaryFolder::entries() const
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

Bytes readFile(const std::string &path)
{
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

void writeFile(const std::string &path, const Bytes &bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good()) << path;
}

std::string shellWord(const std::string &word)
{
    std::string result = "'";
    for (const char c : word)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

Outcome runShell(const std::string &command)
{
    const TemporaryFolder folder;
    const std::string out = folder / "out";
    const std::string err = folder / "err";
    const int status =
        std::system(("{ " + command + "; } >" + shellWord(out) + " 2>" + shellWord(err)).c_str());
    const auto text = [](const Bytes &bytes) { return std::string(bytes.begin(), bytes.end()); };
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, text(readFile(out)), text(readFile(err))};
}

std::string macProgram()
{
    const char *resources = std::getenv("KRUV_RESOURCES");
    if (!resources)
        throw std::runtime_error("KRUV_RESOURCES must name the folder of the tools");
    return shellWord(std::string(resources) + "/mac");
}

namespace {

/// Values from -1 to 1 of one channel.
class Generator
{
public:
    Generator(Signal signal, unsigned channel)
        : m_signal(signal)
        , m_channel(channel)
        , m_random(7 + channel)
    {
        if (signal == Signal::EqualChannels)
            m_random.seed(1);
    }

    double next()
    {
        const double time = m_block++;
        switch (m_signal) {
        case Signal::Silence:
            return 0;
        case Signal::Noise:
            return random();
        case Signal::Square:
            return static_cast<int>(time / (50 + 13 * m_channel)) % 2 ? -1 : 1;
        case Signal::EqualChannels:
            return 0.5 * std::sin(time * 0.03) + 0.01 * random();
        case Signal::Impulses:
            return m_random() % 977 == 0 ? random() : 0;
        case Signal::Sweep:
            return std::sin(time * time * 1e-5 + m_channel);
        case Signal::Music:
            return pluck(time);
        case Signal::Extremes:
            return m_random() % 2 ? -1 : 1;
        case Signal::OneSilent:
            return m_channel == 0 ? 0.3 * random() : 0;
        }
        return 0;
    }

private:
    double random() { return static_cast<double>(m_random()) / 2147483648.0 - 1; }

    /// Decaying harmonics, a new note now and then, a little noise.
    double pluck(double time)
    {
        constexpr double noteLength = 9000;
        const int note = static_cast<int>(time / noteLength);
        const double age = std::fmod(time, noteLength);
        const double pitch = 110 * std::pow(2, (note * 7 % 24) / 12.0) / 44100 * 2 * std::numbers::pi;
        double value = 0;
        for (int harmonic = 1; harmonic < 9; ++harmonic)
            value +=
                std::sin(age * pitch * harmonic + m_channel) * std::exp(-age * harmonic / 20000) / harmonic;
        return 0.3 * value + 0.0005 * random();
    }

    Signal m_signal;
    unsigned m_channel;
    std::mt19937 m_random;
    double m_block = 0;
};

} // namespace

Bytes makeAudio(Signal signal, Format format, unsigned blocks)
{
    std::vector<Generator> generators;
    for (unsigned channel = 0; channel < format.channels; ++channel)
        generators.emplace_back(signal, channel);
    Bytes audio;
    audio.reserve(std::size_t{blocks} * format.blockBytes());
    const double scale = std::pow(2, format.bits - 1);
    for (unsigned i = 0; i < blocks * format.channels; ++i) {
        const double value = std::clamp(generators[i % format.channels].next() * scale, -scale, scale - 1);
        const auto sample = static_cast<uint32_t>(static_cast<int32_t>(value) + (format.bits == 8 ? 128 : 0));
        for (unsigned shift = 0; shift < format.bits; shift += 8)
            audio.push_back(static_cast<uint8_t>(sample >> shift));
    }
    return audio;
}

Bytes operator+(Bytes left, const Bytes &right)
{
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes bytesOf(const std::string &text)
{
    return Bytes(text.begin(), text.end());
}

Bytes wavHeader(Format format, uint32_t dataSize)
{
    Bytes header = bytesOf("RIFF....WAVEfmt ................data....");
    header.resize(44);
    std::copy_n("data", 4, &header[36]);
    tools::writeLe32(&header[4], dataSize + 36);
    tools::writeLe32(&header[16], 16);
    tools::writeLe16(&header[20], 1);
    tools::writeLe16(&header[22], format.channels);
    tools::writeLe32(&header[24], 44100);
    tools::writeLe32(&header[28], 44100 * format.blockBytes());
    tools::writeLe16(&header[32], format.blockBytes());
    tools::writeLe16(&header[34], format.bits);
    tools::writeLe32(&header[40], dataSize);
    return header;
}

Bytes wavFile(Format format, const Bytes &audio)
{
    Bytes file = wavHeader(format, static_cast<uint32_t>(audio.size())) + audio;
    if (audio.size() % 2 != 0)
        file.push_back(0);
    return file;
}

Bytes decodedByFfmpeg(const std::string &path, Format format)
{
    const char *raw = format.bits == 8 ? "u8" : format.bits == 16 ? "s16le" : "s24le";
    const Outcome outcome = runShell("ffmpeg -v error -nostdin -xerror -err_detect crccheck+explode -i " +
                                     shellWord(path) + " -f " + raw + " -");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return Bytes(outcome.out.begin(), outcome.out.end());
}

std::string compressed(const TemporaryFolder &folder, const Bytes &wav, unsigned level)
{
    writeFile(folder / "in.wav", wav);
    TimedProgress silent(false);
    compress(folder / "in.wav", folder / "out.ape", *findLevel(level), silent);
    return folder / "out.ape";
}

Bytes decompressed(const Bytes &ape)
{
    tools::MemorySink sink;
    TimedProgress silent(false);
    decompress(RandomInput(std::span<const uint8_t>(ape)), sink, silent);
    return sink.take();
}

} // namespace kruv::mac::test
