// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dvda/LpcmFormat.h"

#include "common/ToolError.h"

#include <array>
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
        Bytes permutation;
    };
    const Case cases[] = {
        {16, 2, {1, 0, 3, 2, 5, 4, 7, 6}},
        {24, 3, {8, 7, 17, 16, 6, 15, 2, 1, 5, 4, 11, 10, 14, 13, 0, 3, 9, 12}},
        {24, 6, {8,  7,  11, 10, 26, 25, 29, 28, 6,  9,  24, 27, 2,  1,  5,  4,  14, 13,
                 17, 16, 20, 19, 23, 22, 32, 31, 35, 34, 0,  3,  12, 15, 18, 21, 30, 33}},
    };
    for (const Case &c : cases)
        EXPECT_EQ(lpcmFormat(48000, c.bits, c.channels, 0).pairPermutation(), c.permutation)
            << c.bits << " bit, " << c.channels << " channels";
}

TEST(LpcmFormat, AssignsChannelsBySpeakers)
{
    // channels, mask, assignment
    const std::array<unsigned, 3> cases[] = {
        {1, 0, 0},     {2, 0, 1},      {3, 0, 7},      {4, 0, 3},      {5, 0, 9},
        {6, 0, 20},    {3, 0x103, 2},  {3, 0x00B, 4},  {4, 0x10B, 5},  {5, 0x03B, 6},
        {4, 0x107, 8}, {4, 0x00F, 10}, {5, 0x10F, 11}, {6, 0x60F, 20}, // side speakers
        {2, 0x005, 1}, {4, 0x003, 3}, // unknown, and one that does not fit the number of channels
    };
    for (const auto &[channels, mask, assignment] : cases)
        EXPECT_EQ(lpcmFormat(48000, 16, channels, mask).channelAssignment, assignment) << mask;
}

TEST(LpcmFormat, KeepsToTheLimitsOfTheDisc)
{
    using Layout = std::array<unsigned, 3>; // rate, bits, channels
    for (const auto &[rate, bits, channels] : {Layout{44100, 24, 6},
                                               {48000, 24, 6},
                                               {88200, 16, 6},
                                               {96000, 16, 6},
                                               {96000, 24, 4},
                                               {192000, 24, 2},
                                               {48000, 8, 2}})
        EXPECT_NO_THROW(lpcmFormat(rate, bits, channels, 0)) << rate << " " << bits << " " << channels;
    for (const auto &[rate, bits, channels] : {Layout{96000, 24, 5},
                                               {96000, 24, 6},
                                               {176400, 16, 3},
                                               {192000, 16, 3},
                                               {48000, 32, 2},
                                               {32000, 16, 2},
                                               {48000, 16, 7},
                                               {48000, 16, 0}})
        EXPECT_THROW(lpcmFormat(rate, bits, channels, 0), tools::ToolError)
            << rate << " " << bits << " " << channels;
}

} // namespace
} // namespace kruv::dvda
