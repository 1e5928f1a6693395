// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/MemorySink.h"
#include "common/OutputFile.h"
#include "common/TestProcess.h"
#include "common/ToolError.h"
#include "ttaenc/Decoder.h"
#include "ttaenc/Encoder.h"
#include "ttaenc/Filter.h"

#include <gtest/gtest.h>
#include <random>

namespace kruv::ttaenc {

using namespace tools::test;
using tools::InputStream;
using tools::MemorySink;
using tools::ToolError;
using tools::WavFormat;

namespace {

Bytes encoded(const Bytes &file)
{
    const TemporaryFolder folder;
    InputStream input(file, "test.wav");
    tools::OutputFile output(folder.path("out.tta"));
    encode(input, output, [](std::uint64_t, std::uint64_t) {});
    output.commit();
    return readFile(folder.path("out.tta"));
}

struct Decoded
{
    Bytes file;
    std::vector<std::string> problems;
    bool endedEarly = false;
};

Decoded decoded(const Bytes &stream)
{
    Decoded result;
    InputStream input(stream, "test.tta");
    MemorySink output;
    try {
        Decoder decoder(input);
        try {
            decoder.run(output, [](std::uint64_t, std::uint64_t) {});
        } catch (const ToolError &) {
            result.endedEarly = true;
        }
        result.problems = decoder.problems();
    } catch (const ToolError &) {
        result.endedEarly = true;
    }
    result.file = output.take();
    return result;
}

constexpr std::uint32_t rate = 1000; // frames of 1044 steps
constexpr std::size_t framesStart = 22;

std::size_t firstFrame(std::size_t frames)
{
    return framesStart + 4 * frames + 4;
}

} // namespace

// Small files whose decoding was checked with another decoder.
TEST(TtaCodec, KeepsItsStreamFormat)
{
    struct Row
    {
        WavFormat format;
        const char *samples;
        const char *stream;
    };
    const Row rows[] = {
        {{44100, 1, 16},
         "00000100ffff64009cffff7f00800500",
         "5454413101000100100044ac0000080000003483a4fd200000002270768100108000c910feffffffffffffff97eafffffff"
         "fffffff27"
         "e5ff5786027b4470"},
        {{44100, 2, 24},
         "6400009cffffd0070094f8ffd4feff06ffff070000f8ffff3930001fefff",
         "5454413101000200180044ac000005000000edc9876b1a000000e768e01e2003c01fbec6fca597211068c2ffffff3f5ffff"
         "fca02a976"
         "2779"},
        {{44100, 1, 8},
         "80817fe41cff0085",
         "5454413101000100080044ac0000080000002842ddc90f0000004acf277900108000c900f69a74c3002f0a5fd5"},
        {{44100, 1, 16}, "", "5454413101000100100044ac000000000000dbab103800000000"},
    };
    for (const Row &row : rows) {
        const Bytes file = wav(row.format, fromHex(row.samples));
        EXPECT_EQ(encoded(file), fromHex(row.stream));
        const Decoded result = decoded(fromHex(row.stream));
        EXPECT_EQ(result.file, file);
        EXPECT_TRUE(result.problems.empty());
    }
}

TEST(TtaCodec, GivesAllAudioBack)
{
    for (const unsigned bits : {8u, 12u, 16u, 20u, 24u}) {
        for (const unsigned channels : {1u, 2u, 3u, 6u}) {
            const WavFormat format{rate, static_cast<std::uint16_t>(channels),
                                   static_cast<std::uint16_t>(bits)};
            for (const Signal signal : allSignals) {
                const Bytes file = wavWithSpeakers(format, pcm(signal, format, 2500));
                EXPECT_TRUE(decoded(encoded(file)).file == file)
                    << bits << " bits, " << channels << " channels, signal " << int(signal);
            }
            for (const std::size_t frames : {1, 2, 3, 1043, 1044, 1045, 2088, 2089}) {
                const Bytes file = wavWithSpeakers(format, pcm(Signal::Music, format, frames));
                EXPECT_TRUE(decoded(encoded(file)).file == file) << frames << " frames";
            }
        }
    }
}

TEST(TtaCodec, AllFiltersGiveTheSameNumbers)
{
    const Filter *fast = Filter::sse41();
    if (!fast) {
        GTEST_SKIP() << "this processor has only the portable one";
    }
    std::mt19937 random(5);
    for (const unsigned bytesPerSample : {1u, 2u, 3u}) {
        for (const unsigned channels : {1u, 2u, 5u}) {
            // Noise beyond 24 bits, so that everything that can wrap does.
            std::vector<std::int32_t> data(std::size_t(channels) * 3000);
            for (auto &value : data) {
                value = static_cast<std::int32_t>(random() >> (random() % 20)) * (random() % 2 ? 1 : -1);
            }
            auto other = data;
            for (const auto function : {&Filter::encode, &Filter::decode, &Filter::decode}) {
                (Filter::portable().*function)(data.data(), 3000, channels, bytesPerSample);
                (fast->*function)(other.data(), 3000, channels, bytesPerSample);
                ASSERT_EQ(data, other) << bytesPerSample << " bytes, " << channels << " channels";
            }
        }
    }
}

TEST(TtaCodec, SurvivesRareLoudSamplesInNearSilence)
{
    // Each of them takes up to two megabytes of ones in the stream.
    const WavFormat format{rate, 1, 24};
    Bytes audio(std::size_t(3) * 1500);
    for (std::size_t i = 0; i < audio.size(); i += 3) {
        audio[i] = static_cast<std::uint8_t>(i / 3 % 4);
    }
    for (const std::size_t i : {700u, 1400u}) {
        audio[3 * i + 2] = 0x7F;
    }
    const Bytes file = wav(format, audio);
    EXPECT_TRUE(decoded(encoded(file)).file == file);
}

TEST(TtaCodec, FindsEveryDamagedByteAndKeepsTheOtherFrames)
{
    const WavFormat format{rate, 2, 16};
    const Bytes file = wav(format, pcm(Signal::Music, format, 4 * 1044 + 500));
    const Bytes stream = encoded(file);
    std::vector<std::size_t> starts = {firstFrame(5)};
    for (std::size_t i = 0; i < 5; ++i) {
        starts.push_back(starts.back() + tools::readLe32(&stream[framesStart + 4 * i]));
    }
    ASSERT_EQ(starts.back(), stream.size());
    std::mt19937 random(9);
    for (int i = 0; i < 200; ++i) {
        const std::size_t place = random() % stream.size();
        Bytes bad = stream;
        bad[place] = static_cast<std::uint8_t>(bad[place] ^ (1u << random() % 8));
        const Decoded result = decoded(bad);
        EXPECT_TRUE(result.endedEarly || !result.problems.empty()) << place;
        if (place < starts[0]) {
            continue;
        }
        ASSERT_EQ(result.file.size(), file.size()) << place;
        const auto frame =
            static_cast<std::size_t>(std::upper_bound(starts.begin(), starts.end(), place) - starts.begin()) -
            1;
        Bytes expected = file;
        const std::size_t begin = 44 + frame * 1044 * 4;
        std::fill_n(expected.begin() + std::ptrdiff_t(begin),
                    std::min(std::size_t(1044) * 4, file.size() - begin), 0);
        EXPECT_TRUE(result.file == expected)
            << "the damaged frame is silent, the others are whole; " << place;
    }
}

TEST(TtaCodec, GivesWhatCameBeforeACut)
{
    const WavFormat format{rate, 2, 16};
    const Bytes file = wav(format, pcm(Signal::Music, format, 4 * 1044 + 500));
    const Bytes stream = encoded(file);
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        const std::size_t length = random() % stream.size();
        const Decoded result = decoded(Bytes(stream.begin(), stream.begin() + std::ptrdiff_t(length)));
        EXPECT_TRUE(result.endedEarly) << length;
        ASSERT_LE(result.file.size(), file.size());
        EXPECT_TRUE(std::equal(result.file.begin(), result.file.end(), file.begin())) << length;
    }
}

TEST(TtaCodec, DecodesFrameByFrameWhenTheTableIsDamaged)
{
    const WavFormat format{rate, 2, 16};
    const Bytes file = wav(format, pcm(Signal::Music, format, 3000));
    Bytes stream = encoded(file);
    stream[framesStart + 1] ^= 0x40;
    const Decoded result = decoded(stream);
    EXPECT_EQ(result.problems.size(), 1u);
    EXPECT_TRUE(result.file == file);
}

TEST(TtaCodec, RefusesImpossibleHeaders)
{
    const Bytes good = encoded(song(100));
    const std::pair<std::size_t, std::uint32_t> rows[] = {
        {4, 2}, {4, 3}, {6, 0}, {6, 9}, {8, 0}, {8, 32}, {10, 0}, {10, 0xFFFFFFFF}, {14, 0xFFFFFFFF},
    };
    for (const auto &[offset, value] : rows) {
        Bytes bad = good;
        if (offset < 10) {
            tools::writeLe16(&bad[offset], value);
        } else {
            tools::writeLe32(&bad[offset], value);
        }
        tools::writeLe32(&bad[18], tools::crc32(std::span(bad).first(18)));
        InputStream input(bad, "test.tta");
        EXPECT_THROW(Decoder{input}, ToolError) << offset << " " << value;
    }
}

} // namespace kruv::ttaenc
