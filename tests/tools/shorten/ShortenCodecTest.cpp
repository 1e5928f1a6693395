// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/InputStream.h"
#include "common/MemorySink.h"
#include "common/TestProcess.h"
#include "common/ToolError.h"
#include "shorten/BitWriter.h"
#include "shorten/Decoder.h"
#include "shorten/WavEncoder.h"

#include <gtest/gtest.h>
#include <random>

namespace kruv::shorten {

using namespace tools::test;
using tools::InputStream;
using tools::MemorySink;
using tools::ToolError;
using tools::WavFormat;

namespace {

Bytes encoded(const Bytes &file)
{
    InputStream input(file, "test.wav");
    MemorySink output;
    encodeWav(input, output);
    return output.take();
}

/// What came out before an error; damaged says whether there was one.
Bytes decoded(const Bytes &stream, bool *damaged = nullptr)
{
    InputStream input(stream, "test.shn");
    MemorySink output;
    try {
        Decoder(input, output).run();
    } catch (const ToolError &) {
        if (!damaged) {
            throw;
        }
        *damaged = true;
    }
    return output.take();
}

/// A stream that uses what the encoder does not: linear prediction, a shift that changes between blocks,
/// blocks of zeros, bytes between the blocks.
Bytes unusualStream(std::uint32_t version)
{
    const std::uint32_t meanBlocks = version == 1 ? 0 : 3;
    MemorySink sink;
    const Bytes magic = {'a', 'j', 'k', 'g', static_cast<std::uint8_t>(version)};
    sink.write(magic);
    BitWriter bits(sink);
    for (const std::uint32_t value : {5u, 2u, 32u, 4u, meanBlocks, 0u}) {
        bits.putLong(value);
    }
    bits.putUnsigned(9, width::function);
    bits.putUnsigned(44, width::verbatimLength);
    for (const std::uint8_t byte : WavFormat().header(std::uint64_t(5) * 32 * 4)) {
        bits.putUnsigned(byte, width::verbatimByte);
    }
    std::mt19937 random(7);
    for (unsigned block = 0; block < 5; ++block) {
        for (unsigned channel = 0; channel < 2; ++channel) {
            if (block == 2) {
                bits.putUnsigned(6, width::function);
                bits.putUnsigned(1 + channel * 2, width::bitShift);
            }
            if (block == 3 && channel == 1) {
                bits.putUnsigned(8, width::function);
                continue;
            }
            const bool linear = (block + channel) % 2 == 0;
            bits.putUnsigned(linear ? 7 : block % 4, width::function);
            bits.putUnsigned(4, width::energy);
            if (linear) {
                bits.putUnsigned(3, width::lpcOrder);
                for (const int coefficient : {40, -22, 9}) {
                    bits.putSigned(coefficient, width::lpcCoefficient);
                }
            }
            for (unsigned i = 0; i < 32; ++i) {
                bits.putSigned(static_cast<int>(random() % 61) - 25, 4);
            }
        }
    }
    bits.putUnsigned(4, width::function);
    bits.finish();
    return sink.take();
}

} // namespace

// Small files whose decoding was checked with another decoder.
TEST(ShortenCodec, KeepsItsStreamFormat)
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
         "616a6b6702fb72e013f24ab2a549a351a690080402af41ab516cd6dba482210080402030080c0289ac80403115880c02050"
         "0884"
         "02c961ba586210080401531190004005000c19106380fff807fff005240"},
        {{44100, 2, 16},
         "000000000000000004000800fcff0c00e80318fc",
         "616a6b6702fbb17009f9255952a4d1a8d38804020157a0d5a8b66b6dd241108040201018040a0144d64020110d8c0a01048"
         "0442"
         "0164b0dd2c3148040200bf5b4d810214101d26c08112300e690"},
        {{44100, 1, 8},
         "80817fe41cff0085",
         "616a6b6702dae5c027e495654a9346a34b201008055e8356a2d9adb74904420100804060101805135900805135900804060"
         "10880"
         "592c374b0c220100802a626c085044811c7e1fe524"},
    };
    for (const Row &row : rows) {
        const Bytes file = wav(row.format, fromHex(row.samples));
        EXPECT_EQ(encoded(file), fromHex(row.stream));
        EXPECT_EQ(decoded(fromHex(row.stream)), file);
    }
}

TEST(ShortenCodec, GivesEveryFileBackByteForByte)
{
    const Bytes extra = chunk("LIST", 601);
    for (const unsigned bits : {8u, 16u}) {
        for (const unsigned channels : {1u, 2u, 3u, 8u}) {
            const WavFormat format{44100, static_cast<std::uint16_t>(channels),
                                   static_cast<std::uint16_t>(bits)};
            for (const Signal signal : allSignals) {
                const Bytes file = wav(format, pcm(signal, format, 3001), extra, extra);
                EXPECT_TRUE(decoded(encoded(file)) == file)
                    << bits << " bits, " << channels << " channels, signal " << int(signal);
            }
            for (const std::size_t frames : {0, 1, 2, 3, 4, 255, 256, 257, 258, 511, 512, 513, 767}) {
                const Bytes file = wav(format, pcm(Signal::Mixed, format, frames));
                EXPECT_TRUE(decoded(encoded(file)) == file)
                    << frames << " frames, " << channels << " channels";
            }
        }
    }
}

TEST(ShortenCodec, MatchesFfmpegOnStreamsOfOtherEncoders)
{
    const TemporaryFolder folder;
    for (const std::uint32_t version : {1u, 2u, 3u}) {
        Bytes stream = unusualStream(version);
        if (version == 3) {
            stream = stream + chunk("SEEK", 84) + Bytes{24, 0, 0, 0, 'S', 'H', 'N', 'A', 'M', 'P', 'S', 'K'};
        }
        const Bytes file = decoded(stream);
        ASSERT_EQ(file.size(), 44u + 5 * 32 * 4);
        const Bytes audio(file.begin() + 44, file.end());
        EXPECT_EQ(audio, decodeWithFfmpeg(folder.write("v.shn", stream), "s16le")) << "version " << version;
    }
}

TEST(ShortenCodec, DecodesTheOtherSampleTypes)
{
    // The samples 1, -2, 3 around each type's centre.
    const std::pair<std::uint32_t, Bytes> rows[] = {
        {1, {0x01, 0xFE, 0x03}},
        {3, {0x00, 0x01, 0xFF, 0xFE, 0x00, 0x03}},
        {4, {0x80, 0x01, 0x7F, 0xFE, 0x80, 0x03}},
        {6, {0x01, 0x80, 0xFE, 0x7F, 0x03, 0x80}},
    };
    for (const auto &[type, expected] : rows) {
        MemorySink sink;
        sink.write(Bytes{'a', 'j', 'k', 'g', 2});
        BitWriter bits(sink);
        for (const std::uint32_t value : {type, 1u, 3u, 0u, 0u, 0u}) {
            bits.putLong(value);
        }
        bits.putUnsigned(0, width::function);
        bits.putUnsigned(2, width::energy);
        for (const int value : {1, -2, 3}) {
            bits.putSigned(value, 2);
        }
        bits.putUnsigned(4, width::function);
        bits.finish();
        EXPECT_EQ(decoded(sink.take()), expected) << "type " << type;
    }
}

TEST(ShortenCodec, GivesWhatCameBeforeACut)
{
    const Bytes file = song(5000);
    const Bytes stream = encoded(file);
    std::mt19937 random(3);
    for (int i = 0; i < 200; ++i) {
        // The last word may be padding only.
        const std::size_t length = random() % (stream.size() - 8);
        bool damaged = false;
        const Bytes part = decoded(Bytes(stream.begin(), stream.begin() + std::ptrdiff_t(length)), &damaged);
        EXPECT_TRUE(damaged) << length;
        ASSERT_LE(part.size(), file.size());
        EXPECT_TRUE(std::equal(part.begin(), part.end(), file.begin())) << length;
        EXPECT_GE(part.size() + 4096, length * file.size() / stream.size() * 9 / 10) << length;
    }
}

TEST(ShortenCodec, RefusesImpossibleStreams)
{
    const auto headerWith = [](std::uint8_t version, std::initializer_list<std::uint32_t> values) {
        MemorySink sink;
        sink.write(Bytes{'a', 'j', 'k', 'g', version});
        BitWriter bits(sink);
        for (const std::uint32_t value : values) {
            bits.putLong(value);
        }
        bits.finish();
        return sink.take();
    };
    const std::pair<const char *, Bytes> rows[] = {
        {"empty", {}},
        {"not Shorten", song(10)},
        {"version 0", headerWith(0, {5, 2, 256, 0, 4, 0})},
        {"version 4", headerWith(4, {5, 2, 256, 0, 4, 0})},
        {"companded", headerWith(2, {8, 2, 256, 0, 0, 0})},
        {"unknown type", headerWith(2, {77, 2, 256, 0, 4, 0})},
        {"no channels", headerWith(2, {5, 0, 256, 0, 4, 0})},
        {"too many channels", headerWith(2, {5, 5000, 256, 0, 4, 0})},
        {"no block size", headerWith(2, {5, 2, 0, 0, 4, 0})},
        {"huge block size", headerWith(2, {5, 2, 0x7FFFFFFF, 0, 4, 0})},
        {"huge order", headerWith(2, {5, 2, 256, 0x7FFFFFFF, 4, 0})},
        {"huge mean", headerWith(2, {5, 2, 256, 0, 0x7FFFFFFF, 0})},
        {"endless zeros", Bytes{'a', 'j', 'k', 'g', 2} + Bytes(100000)},
    };
    for (const auto &[name, bytes] : rows) {
        EXPECT_THROW(decoded(bytes), ToolError) << name;
    }
}

} // namespace kruv::shorten
