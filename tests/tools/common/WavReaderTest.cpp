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
    Bytes block(96 * reader.format().bytesPerFrame());
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
    const ReadBack result = readAll(input);
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
    const WavFormat format{48000, 6, 24};
    Bytes file = wav(format, pcm(Signal::Noise, format, 10));
    writeLe16(&file[20], 0xFFFE);
    writeLe32(&file[16], 40);
    const Bytes extension = fromHex("1600180000003f00"
                                    "0100000000001000800000aa00389b71");
    file.insert(file.begin() + 36, extension.begin(), extension.end());
    InputStream input(file, "test.wav");
    const WavReader reader(input);
    EXPECT_TRUE(reader.format().extensible);
    EXPECT_EQ(reader.format().channels, 6);
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
    Bytes rf64 = good;
    rf64[1] = 'F', rf64[2] = '6', rf64[3] = '4';
    const std::pair<const char *, Bytes> rows[] = {
        {"empty", {}},
        {"text", Bytes(200, 'x')},
        {"RF64", rf64},
        {"other RIFF", changed(8, 'A' | 'V' << 8)},
        {"float", changed(20, 3)},
        {"no channels", changed(22, 0)},
        {"frame size contradicts", changed(32, 6)},
        {"no bits", changed(34, 0)},
        {"no format chunk", changed(12, 'x' | 'x' << 8)},
        {"ends in the header", Bytes(good.begin(), good.begin() + 30)},
        {"chunk longer than the file", changed(16, 60000)},
    };
    for (const auto &[name, file] : rows)
        EXPECT_THROW(readFromMemory(file), ToolError) << name;
}

} // namespace kruv::tools::test
