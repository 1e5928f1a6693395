// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "aacplusenc/MovieBox.h"

#include "common/TestSignals.h"

#include <gtest/gtest.h>
#include <map>
#include <span>

namespace kruv::aacplusenc {
namespace {

using tools::test::Bytes;

std::uint64_t number(std::span<const std::uint8_t> bytes, std::size_t offset, unsigned size)
{
    std::uint64_t value = 0;
    for (unsigned i = 0; i < size; ++i)
        value = value << 8 | bytes[offset + i];
    return value;
}

/// The content of every box by its path ("moov/trak/tkhd"); fails the test where sizes do not nest.
class Boxes
{
public:
    explicit Boxes(const Bytes &bytes) { read(bytes, ""); }

    const Bytes &at(const std::string &path) const { return m_content.at(path); }
    bool has(const std::string &path) const { return m_content.contains(path); }
    std::uint64_t number(const std::string &path, std::size_t offset, unsigned size) const
    {
        return aacplusenc::number(at(path), offset, size);
    }

private:
    void read(std::span<const std::uint8_t> bytes, const std::string &parent)
    {
        while (!bytes.empty()) {
            ASSERT_GE(bytes.size(), 8U) << parent;
            const std::size_t size = aacplusenc::number(bytes, 0, 4);
            ASSERT_TRUE(size >= 8 && size <= bytes.size()) << parent;
            const std::string type(bytes.begin() + 4, bytes.begin() + 8);
            const auto content = bytes.subspan(8, size - 8);
            m_content[parent + type].assign(content.begin(), content.end());
            const std::map<std::string, std::size_t> headers = {
                {"moov", 0}, {"trak", 0}, {"edts", 0}, {"mdia", 0}, {"minf", 0}, {"dinf", 0},  {"stbl", 0},
                {"udta", 0}, {"ilst", 0}, {"----", 0}, {"meta", 4}, {"stsd", 8}, {"mp4a", 28}, {"dref", 8}};
            const auto container = headers.find(type);
            if (container != headers.end())
                read(content.subspan(container->second), parent + type + "/");
            bytes = bytes.subspan(size);
        }
    }

    std::map<std::string, Bytes> m_content;
};

AacTrack track(std::size_t accessUnits)
{
    AacTrack track;
    track.sampleRate = 44100;
    track.coreSampleRate = 22050;
    track.channels = 2;
    track.framesPerAccessUnit = 2048;
    track.encoderDelay = 5058;
    track.bitRate = 48000;
    track.decoderConfig = {0x13, 0x90, 0x56, 0xE5, 0xA0};
    track.accessUnitsPerChunk = 22;
    for (std::size_t i = 0; i < accessUnits; ++i) {
        if (i % 22 == 0)
            track.chunkOffsets.push_back(44 + 300 * i);
        track.accessUnitSizes.push_back(static_cast<std::uint32_t>(300 + i % 7));
    }
    track.sourceFrames = 2048 * accessUnits - 5058 - 1001;
    return track;
}

const std::string table = "moov/trak/mdia/minf/stbl/";

} // namespace

TEST(MovieBox, TellsTheExactLength)
{
    const Boxes boxes(movieBox(track(100)));
    const std::uint64_t frames = 2048 * 100 - 5058 - 1001;
    EXPECT_EQ(boxes.number("moov/mvhd", 12, 4), 44100U);
    EXPECT_EQ(boxes.number("moov/mvhd", 16, 4), frames);
    EXPECT_EQ(boxes.number("moov/trak/tkhd", 20, 4), frames);
    EXPECT_EQ(boxes.number("moov/trak/edts/elst", 8, 4), frames);
    EXPECT_EQ(boxes.number("moov/trak/edts/elst", 12, 4), 5058U / 2);
    EXPECT_EQ(boxes.number("moov/trak/mdia/mdhd", 12, 4), 22050U);
    EXPECT_EQ(boxes.number("moov/trak/mdia/mdhd", 16, 4), 100U * 1024);
    const Bytes &gapless = boxes.at("moov/udta/meta/ilst/----/data");
    EXPECT_EQ(std::string(gapless.begin() + 8, gapless.begin() + 52),
              " 00000000 000009E1 000001F4 000000000001842B");
}

TEST(MovieBox, ListsEveryAccessUnit)
{
    const AacTrack source = track(100); // 4 whole chunks and one of 12
    const Boxes boxes(movieBox(source));
    EXPECT_EQ(boxes.number(table + "stts", 8, 8), std::uint64_t{100} << 32 | 1024);
    ASSERT_EQ(boxes.number(table + "stsz", 8, 4), 100U);
    for (std::size_t i = 0; i < 100; ++i)
        EXPECT_EQ(boxes.number(table + "stsz", 12 + 4 * i, 4), source.accessUnitSizes[i]);
    ASSERT_EQ(boxes.number(table + "stsc", 4, 4), 2U);
    EXPECT_EQ(boxes.number(table + "stsc", 12, 4), 22U);
    EXPECT_EQ(boxes.number(table + "stsc", 20, 4), 5U);
    EXPECT_EQ(boxes.number(table + "stsc", 24, 4), 12U);
    ASSERT_EQ(boxes.number(table + "stco", 4, 4), 5U);
    EXPECT_EQ(boxes.number(table + "stco", 8 + 16, 4), 44U + 300 * 88);

    const Boxes one(movieBox(track(5)));
    EXPECT_EQ(one.number(table + "stsc", 4, 4), 1U);
    EXPECT_EQ(one.number(table + "stsc", 12, 4), 5U);
}

TEST(MovieBox, GrowsFieldsForLongFiles)
{
    AacTrack source = track(1);
    source.accessUnitSizes.assign(2'200'000, 700); // 28 hours
    source.accessUnitsPerChunk = 3'000'000;
    source.sourceFrames = 2'200'000ULL * 2048 - 5058;
    source.chunkOffsets = {5'000'000'000};
    const Boxes boxes(movieBox(source));
    EXPECT_EQ(boxes.number("moov/mvhd", 0, 1), 1U);
    EXPECT_EQ(boxes.number("moov/mvhd", 24, 8), source.sourceFrames);
    EXPECT_EQ(boxes.number("moov/trak/edts/elst", 8, 8), source.sourceFrames);
    EXPECT_EQ(boxes.number("moov/trak/edts/elst", 16, 8), 5058U / 2);
    EXPECT_EQ(boxes.number("moov/trak/mdia/mdhd", 24, 8), 2'200'000ULL * 1024);
    EXPECT_FALSE(boxes.has(table + "stco"));
    EXPECT_EQ(boxes.number(table + "co64", 8, 8), 5'000'000'000ULL);
}

} // namespace kruv::aacplusenc
