// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/PcmReader.h"

#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/TestSignals.h"
#include "common/ToolError.h"

#include <gtest/gtest.h>

namespace kruv::tools::test {
namespace {

Bytes fourBytes(std::uint64_t value)
{
    return {static_cast<std::uint8_t>(value >> 24), static_cast<std::uint8_t>(value >> 16),
            static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)};
}

Bytes text(const std::string &value)
{
    return {value.begin(), value.end()};
}

/// A stereo AIFF, or AIFF-C where a compression type is given, of 44100 Hz.
struct Aiff
{
    unsigned bits = 16;
    std::string compression = {};
    Bytes audio = {};
    std::uint32_t statedFrames = 0;
    std::uint32_t offset = 0;
    std::uint32_t soundChunkSize = 0; ///< 0 = the right one

    Bytes file() const
    {
        Bytes common = Bytes{0, 2} + fourBytes(statedFrames) + Bytes{0, static_cast<std::uint8_t>(bits)} +
                       fromHex("400EAC44000000000000");
        if (!compression.empty()) {
            common = common + text(compression) + Bytes{0, 0};
        }
        const auto right = static_cast<std::uint32_t>(8 + offset + audio.size());
        return text("FORM") + fourBytes(0) + text(compression.empty() ? "AIFF" : "AIFC") + text("NAME") +
               fourBytes(3) + text("abc") + Bytes{0} + text("COMM") + fourBytes(common.size()) + common +
               text("SSND") + fourBytes(soundChunkSize == 0 ? right : soundChunkSize) + fourBytes(offset) +
               fourBytes(0) + Bytes(offset) + audio + text("ANNO");
    }
};

Bytes readAll(PcmReader &reader)
{
    Bytes all;
    Bytes block(5 * reader.format().bytesPerFrame());
    while (const std::size_t got = reader.read(block)) {
        all.insert(all.end(), block.begin(), block.begin() + static_cast<std::ptrdiff_t>(got));
    }
    return all;
}

} // namespace

TEST(PcmReader, GivesAiffAsLittleEndianSamples)
{
    struct Case
    {
        Aiff aiff;
        Bytes expected;
        bool endedEarly = false;
    };
    const Bytes eight = {1, 2, 3, 4, 5, 6, 7, 8};
    const Case cases[] = {
        {{8, "", {0x80, 0x7F}, 1}, {0x80, 0x7F}},
        {{16, "", eight, 2}, {2, 1, 4, 3, 6, 5, 8, 7}},
        {{20, "", {1, 2, 3, 4, 5, 6}, 1}, {3, 2, 1, 6, 5, 4}},
        {{32, "in32", eight, 1}, {4, 3, 2, 1, 8, 7, 6, 5}},
        {{16, "sowt", eight, 2}, eight},
        {{16, "NONE", eight, 2, 6}, {2, 1, 4, 3, 6, 5, 8, 7}},
        {{16, "", eight, 1}, {2, 1, 4, 3}}, // the common chunk counts
        {{16, "", eight, 0}, {2, 1, 4, 3, 6, 5, 8, 7}},
        {{16, "", eight, 500, 0, 2000}, Bytes{2, 1, 4, 3, 6, 5, 8, 7, 'N', 'A', 'O', 'N'}, true},
    };
    for (const Case &c : cases) {
        InputStream input(c.aiff.file(), "test");
        PcmReader reader(input);
        EXPECT_EQ(reader.format().sampleRate, 44100U);
        EXPECT_EQ(reader.frames(), c.expected.size() / reader.format().bytesPerFrame());
        EXPECT_EQ(readAll(reader), c.expected) << c.aiff.bits << " " << c.aiff.compression;
        EXPECT_EQ(reader.endedEarly(), c.endedEarly);
    }
}

TEST(PcmReader, RefusesWhatIsNoIntegerPcm)
{
    Bytes noCommon = Aiff{16, "", {1, 2, 3, 4}, 1}.file();
    noCommon.erase(noCommon.begin() + 24, noCommon.begin() + 24 + 26);
    Bytes noChannels = Aiff{16, "", {1, 2, 3, 4}, 1}.file();
    noChannels[33] = 0;
    for (const Bytes &file :
         {Aiff{32, "fl32", Bytes(8), 1}.file(), Aiff{33, "", Bytes(10), 1}.file(), noCommon, noChannels,
          text("FORM"), text("FORM") + Bytes(40), text("RIFX"), Bytes{}}) {
        const auto read = [&] {
            InputStream input(file, "test");
            PcmReader reader(input);
        };
        EXPECT_THROW(read(), ToolError) << file.size();
    }
}

TEST(PcmReader, RepairsAndWidensWav)
{
    const WavFormat format{44100, 2, 16};
    const Bytes audio = pcm(Signal::Noise, format, 100);
    Bytes wrongFrameSize = wav(format, audio);
    writeLe16(&wrongFrameSize[32], 7);

    Bytes plain = wav(format, audio);
    Bytes sizes(28);
    writeLe32(&sizes[8], 240); // of 400 bytes; the rest is another chunk
    Bytes rf64 = text("RF64") + Bytes(4, 0xFF) + text("WAVEds64") + Bytes{28, 0, 0, 0} + sizes +
                 Bytes(plain.begin() + 12, plain.end());
    writeLe32(&rf64[12 + 36 + 28], 0xFFFFFFFF);

    for (const auto &[file, bytes] : {std::pair<Bytes, std::size_t>{wrongFrameSize, 400}, {rf64, 240}}) {
        InputStream input(file, "test");
        PcmReader reader(input);
        EXPECT_EQ(reader.frames(), bytes / 4);
        EXPECT_EQ(readAll(reader), Bytes(audio.begin(), audio.begin() + static_cast<std::ptrdiff_t>(bytes)));
    }

    InputStream input(wav({44100, 1, 8}, {0x00, 0x80, 0xFF}), "test");
    PcmReader reader(input);
    EXPECT_EQ(readAll(reader), (Bytes{0x80, 0x00, 0x7F}));
}

} // namespace kruv::tools::test
