// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WavReader.h"

#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/TestSignals.h"
#include "common/ToolError.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

namespace kruv::tools::test {

namespace {

struct ReadBack
{
    std::size_t audioBytes = 0;
    Bytes everything;
    bool endedEarly = false;
};

ReadBack readAll(InputStream &input)
{
    WavReader reader(input);
    ReadBack result;
    result.everything = reader.header();
    Bytes block(std::size_t(96) * reader.format().bytesPerFrame());
    while (const std::size_t got = reader.readAudio(block)) {
        result.audioBytes += got;
        result.everything.insert(result.everything.end(), block.begin(), block.begin() + std::ptrdiff_t(got));
    }
    while (const std::size_t got = reader.readTrailing(block)) {
        result.everything.insert(result.everything.end(), block.begin(), block.begin() + std::ptrdiff_t(got));
    }
    result.endedEarly = reader.endedEarly();
    return result;
}

ReadBack readFromMemory(const Bytes &file)
{
    InputStream input(file, "test.wav");
    return readAll(input);
}

// Standard input is replaced by a pipe, whose length nobody knows beforehand.
ReadBack readFromPipe(const Bytes &file)
{
    int ends[2] = {};
    EXPECT_EQ(::pipe(ends), 0);
    const int saved = ::dup(STDIN_FILENO);
    ::dup2(ends[0], STDIN_FILENO);
    ::close(ends[0]);
    std::thread writer([&] {
        EXPECT_EQ(::write(ends[1], file.data(), file.size()), ssize_t(file.size()));
        ::close(ends[1]);
    });
    InputStream input("-");
    ReadBack result = readAll(input);
    writer.join();
    ::dup2(saved, STDIN_FILENO);
    ::close(saved);
    return result;
}

Bytes withSizes(Bytes file, std::uint32_t riff, std::uint32_t data)
{
    writeLe32(&file[4], riff);
    writeLe32(&file[40], data);
    return file;
}

} // namespace

TEST(WavReader, LosesNoByteAndFindsTheAudio)
{
    const WavFormat format{44100, 2, 16};
    const Bytes audio = pcm(Signal::Noise, format, 100);
    const Bytes plain = wav(format, audio);
    const Bytes extra = chunk("LIST", 601) + chunk("id3 ", 7);
    const auto withWave64Size = [&](std::uint64_t size) {
        Bytes file = wave64(format, audio);
        for (std::size_t i = 0; i < 8; ++i) {
            file[file.size() - 408 + i] = static_cast<std::uint8_t>(size >> (8 * i));
        }
        return file;
    };
    const auto withName = [](Bytes file, const std::string &name) {
        std::copy(name.begin(), name.end(), file.begin());
        return file;
    };
    struct Row
    {
        const char *name;
        Bytes file;
        std::size_t audioBytes;
        bool endedEarly;
    };
    const Row rows[] = {
        {"plain", plain, 400, false},
        {"chunks before and after", wav(format, audio, extra, extra), 400, false},
        {"no audio", wav(format, {}), 0, false},
        {"no audio, a chunk after", wav(format, {}, {}, extra), 0, false},
        {"unknown length as 0", withSizes(plain, 0, 0), 400, false},
        {"unknown length as 0xFFFFFFFF", withSizes(plain, 0xFFFFFFFF, 0xFFFFFFFF), 400, false},
        {"unknown length as nearly 2 GiB", withSizes(plain, 0x7FFFF024, 0x7FFFF000), 400, false},
        {"cut short", withSizes(plain, 1036, 1000), 400, true},
        {"an incomplete frame", withSizes(plain, 436, 399), 396, false},
        {"an odd chunk without its padding", wav(format, audio, Bytes{'x', 'y', 'z', ' ', 1, 0, 0, 0, 'x'}),
         400, false},
        {"Wave64", wave64(format, audio), 400, false},
        {"Wave64 of unknown length", withWave64Size(0), 400, false},
        {"Wave64 cut short", withWave64Size(4000), 400, true},
        {"Wave64 of a huge chunk", withWave64Size(~std::uint64_t{0}), 400, false},
        {"BW64", withName(plain, "BW64"), 400, false},
        {"an incomplete frame at the end", Bytes(plain.begin(), plain.end() - 1), 396, true},
    };
    for (const Row &row : rows) {
        for (const bool pipe : {false, true}) {
            const ReadBack result = pipe ? readFromPipe(row.file) : readFromMemory(row.file);
            EXPECT_EQ(result.everything, row.file) << row.name << (pipe ? ", pipe" : "");
            EXPECT_EQ(result.audioBytes, row.audioBytes) << row.name << (pipe ? ", pipe" : "");
            EXPECT_EQ(result.endedEarly, row.endedEarly) << row.name << (pipe ? ", pipe" : "");
        }
    }
}

TEST(WavReader, TakesExtensibleIntegers)
{
    const WavFormat format{48000, 6, 20};
    Bytes file = wavWithSpeakers(format, pcm(Signal::Noise, format, 10));
    InputStream input(file, "test.wav");
    const WavReader reader(input);
    EXPECT_TRUE(reader.format().extensible);
    EXPECT_EQ(reader.format().channels, 6);
    EXPECT_EQ(reader.format().bitsPerSample, 20);
    EXPECT_EQ(reader.format().channelMask, 0x3Fu);
    EXPECT_EQ(reader.format().bytesPerFrame(), 18u);
    EXPECT_EQ(reader.audioBytes(), 180u);

    file[44] = 3; // floating point
    EXPECT_THROW(readFromMemory(file), ToolError);
}

TEST(WavReader, RefusesWhatIsNotPcm)
{
    const Bytes good = song(10);
    const auto changed = [&](std::size_t offset, unsigned value) {
        Bytes file = good;
        writeLe16(&file[offset], value);
        return file;
    };
    const std::pair<const char *, Bytes> rows[] = {
        {"empty", {}},
        {"text", Bytes(200, 'x')},
        {"RIFX", changed(2, 'F' | 'X' << 8)},
        {"other RIFF", changed(8, 'A' | 'V' << 8)},
        {"float", changed(20, 3)},
        {"no channels", changed(22, 0)},
        {"frame size contradicts", changed(32, 6)},
        {"no bits", changed(34, 0)},
        {"no format chunk", changed(12, 'x' | 'x' << 8)},
        {"ends in the header", Bytes(good.begin(), good.begin() + 30)},
        {"chunk longer than the file", changed(16, 60000)},
    };
    for (const auto &[name, file] : rows) {
        EXPECT_THROW(readFromMemory(file), ToolError) << name;
    }
}

} // namespace kruv::tools::test
