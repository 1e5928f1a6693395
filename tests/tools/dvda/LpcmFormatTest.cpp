// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dvda/LpcmFormat.h"

#include "common/ToolError.h"

#include <gtest/gtest.h>

namespace kruv::dvda {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(LpcmFormat, StoresPairsOfFramesInGroups)
{
    struct Case
    {
        unsigned bits;
        unsigned channels;
        std::uint32_t mask;
        Bytes permutation;
    };
    const Case cases[] = {
        {16, 2, 0x03, {1, 0, 3, 2, 5, 4, 7, 6}},
        {24, 2, 0x03, {2, 1, 5, 4, 8, 7, 11, 10, 0, 3, 6, 9}},
        {24, 3, 0x07, {8, 7, 17, 16, 6, 15, 2, 1, 5, 4, 11, 10, 14, 13, 0, 3, 9, 12}},
        {16, 5, 0x37, {5, 4, 7, 6, 9, 8, 15, 14, 17, 16, 19, 18, 1, 0, 3, 2, 11, 10, 13, 12}},
        {16, 6, 0x3F, {5, 4, 7, 6, 17, 16, 19, 18, 1, 0, 3, 2, 9, 8, 11, 10, 13, 12, 15, 14, 21, 20, 23, 22}},
        {24, 6, 0x3F, {8,  7,  11, 10, 26, 25, 29, 28, 6,  9,  24, 27, 2,  1,  5,  4,  14, 13,
                       17, 16, 20, 19, 23, 22, 32, 31, 35, 34, 0,  3,  12, 15, 18, 21, 30, 33}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(lpcmFormat(48000, c.bits, c.channels, c.mask).pairPermutation(), c.permutation)
            << c.bits << " bit, " << c.channels << " channels";
}

TEST(LpcmFormat, HasItsCode)
{
    using Code = std::array<std::uint8_t, 3>;
    EXPECT_EQ(lpcmFormat(44100, 16, 2, 0).code(), (Code{0x0F, 0x8F, 0x01}));
    EXPECT_EQ(lpcmFormat(96000, 24, 2, 0).code(), (Code{0x2F, 0x1F, 0x01}));
    EXPECT_EQ(lpcmFormat(48000, 24, 6, 0).code(), (Code{0x22, 0x00, 0x14}));
    EXPECT_EQ(lpcmFormat(176400, 20, 1, 0).code(), (Code{0x2F, 0xAF, 0x00}));
}

TEST(LpcmFormat, AssignsChannelsBySpeakers)
{
    struct Case
    {
        unsigned channels;
        std::uint32_t mask;
        unsigned assignment;
    };
    const Case cases[] = {
        {1, 0, 0},     {2, 0, 1},      {3, 0, 7},      {4, 0, 3},      {5, 0, 9},
        {6, 0, 20},    {3, 0x103, 2},  {3, 0x00B, 4},  {4, 0x10B, 5},  {5, 0x03B, 6},
        {4, 0x107, 8}, {4, 0x00F, 10}, {5, 0x10F, 11}, {6, 0x60F, 20}, // side speakers
        {2, 0x005, 1}, {4, 0x003, 3}, // unknown, and one that does not fit the number of channels
    };
    for (const Case &c : cases)
        EXPECT_EQ(lpcmFormat(48000, 16, c.channels, c.mask).channelAssignment, c.assignment)
            << c.channels << " channels, mask " << c.mask;
}

TEST(LpcmFormat, KeepsToTheLimitsOfTheDisc)
{
    struct Case
    {
        std::uint32_t rate;
        unsigned bits;
        unsigned channels;
        bool possible;
    };
    const Case cases[] = {
        {44100, 24, 6, true},   {48000, 24, 6, true},   {88200, 16, 6, true},  {96000, 16, 6, true},
        {96000, 24, 4, true},   {96000, 24, 5, false},  {96000, 24, 6, false}, {192000, 24, 2, true},
        {176400, 16, 3, false}, {192000, 16, 3, false}, {48000, 8, 2, true},   {48000, 32, 2, false},
        {32000, 16, 2, false},  {48000, 16, 7, false},  {48000, 16, 0, false},
    };
    for (const Case &c : cases) {
        const auto make = [&] { return lpcmFormat(c.rate, c.bits, c.channels, 0); };
        if (c.possible)
            EXPECT_NO_THROW(make()) << c.rate << " " << c.bits << " " << c.channels;
        else
            EXPECT_THROW(make(), tools::ToolError) << c.rate << " " << c.bits << " " << c.channels;
    }
}

} // namespace
} // namespace kruv::dvda
