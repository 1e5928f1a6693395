// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dvda/InfoFiles.h"

#include "common/TestSignals.h"

#include <gtest/gtest.h>

namespace kruv::dvda {
namespace {

using tools::test::Bytes;
using tools::test::fromHex;

Bytes part(const Bytes &bytes, std::size_t offset, std::size_t count)
{
    return {bytes.begin() + static_cast<std::ptrdiff_t>(offset),
            bytes.begin() + static_cast<std::ptrdiff_t>(offset + count)};
}

std::uint32_t u32(const Bytes &bytes, std::size_t offset)
{
    return static_cast<std::uint32_t>(bytes[offset] << 24 | bytes[offset + 1] << 16 | bytes[offset + 2] << 8 |
                                      bytes[offset + 3]);
}

/// Three tracks of different formats, the information files of which an independent reader has taken.
Disc threeFormats()
{
    return {{{lpcmFormat(44100, 16, 2, 0), {{0, 267, 585, 272518}}},
             {lpcmFormat(96000, 24, 2, 0), {{268, 845, 585, 180729}}},
             {lpcmFormat(48000, 24, 6, 0), {{846, 1723, 585, 180941}}}},
            1724};
}

TEST(InfoFiles, DescribeTheTitleSet)
{
    const Bytes info = titleSetInfo(threeFormats());
    ASSERT_EQ(info.size(), 2 * sectorBytes);
    EXPECT_EQ(std::string(info.begin(), info.begin() + 12), "DVDAUDIO-ATS");
    EXPECT_EQ(u32(info, 0x0C), 0x6BFU);
    EXPECT_EQ(u32(info, 0xC4), 2U);
    EXPECT_EQ(part(info, 0x100, 5), fromHex("00000F8F01"));
    EXPECT_EQ(part(info, 0x110, 5), fromHex("00002F1F01"));
    EXPECT_EQ(part(info, 0x120, 5), fromHex("0000220014"));
    EXPECT_EQ(part(info, 0x130, 16), Bytes(16));
    EXPECT_EQ(part(info, 0x800, 80),
              fromHex("00030000000000AF810100000000002082010000000000508301000000000080"
                      "00000101000428860000001000240000C0100000010000000249000428860000"
                      "0000000001000000000000000000010B"));
    EXPECT_EQ(part(info, 0x860, 2), fromHex("C810"));
    EXPECT_EQ(part(info, 0x890, 2), fromHex("D000"));
}

TEST(InfoFiles, DescribeTheDisc)
{
    const Bytes info = managerInfo(threeFormats());
    ASSERT_EQ(info.size(), 3 * sectorBytes);
    EXPECT_EQ(std::string(info.begin(), info.begin() + 12), "DVDAUDIO-AMG");
    EXPECT_EQ(part(info, 0x800, 46), fromHex("0003002D8101000000042886010100000006"
                                             "810100000002C1F901020000000681010000"
                                             "0002C2CD010300000006"));
    EXPECT_EQ(part(info, 0x800, 0x800), part(info, 0x1000, 0x800));
}

TEST(InfoFiles, PointSimplePlayersToAbsoluteSectors)
{
    const std::uint32_t ownSector = usualInfoSector(1);
    EXPECT_EQ(ownSector, 278U);
    const Bytes info = simplePlayerInfo(threeFormats(), ownSector);
    ASSERT_EQ(info.size(), 64 * sectorBytes);
    EXPECT_EQ(part(info, 12, 4), fromHex("00030012"));
    const std::uint32_t first[] = {350, 618, 1196};
    const std::uint32_t last[] = {617, 1195, 2073};
    const char *formats[] = {"C80F8F01", "482F1F01", "40220014"};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::size_t record = 16 + 52 * i;
        EXPECT_EQ(info[record + 3], i + 1);
        EXPECT_EQ(part(info, record + 16, 4), fromHex(formats[i]));
        EXPECT_EQ(u32(info, record + 40), first[i]);
        EXPECT_EQ(u32(info, record + 44), first[i]);
        EXPECT_EQ(u32(info, record + 48), last[i]);
    }
    for (std::size_t copy = 1; copy < 8; ++copy) {
        EXPECT_EQ(part(info, copy * 16384, 16384), part(info, 0, 16384));
    }
}

// The title table outgrows its sector; everything behind moves.
TEST(InfoFiles, HoldTheLargestGroups)
{
    Disc oneTitle{{{lpcmFormat(44100, 16, 2, 0), {}}}, 990};
    Disc manyTitles{{}, 990};
    for (std::uint32_t i = 0; i < 99; ++i) {
        const Track track{10 * i, 10 * i + 9, 585, 1000};
        oneTitle.titles[0].tracks.push_back(track);
        manyTitles.titles.push_back({lpcmFormat(i % 2 ? 48000 : 44100, 16, 2, 0), {track}});
    }
    EXPECT_EQ(titleSetInfo(oneTitle).size(), 3 * sectorBytes);
    EXPECT_EQ(u32(titleSetInfo(oneTitle), 0xC4), 3U);
    const Bytes info = titleSetInfo(manyTitles);
    EXPECT_EQ(info.size(), 4 * sectorBytes);
    EXPECT_EQ(u32(info, 0x804), 5551U);
    EXPECT_EQ(u32(simplePlayerInfo(manyTitles, 300), 16 + 40), 300U + 64 + 6 + 4);
    EXPECT_EQ(managerInfo(manyTitles)[0x801], 99);
}

} // namespace
} // namespace kruv::dvda
