// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "WavHeader.h"

#include <gtest/gtest.h>

namespace kruv::adapters {

namespace {

// Two-byte and four-byte numbers, little-endian.
std::string u16(unsigned value)
{
    return {static_cast<char>(value & 0xFF), static_cast<char>(value >> 8 & 0xFF)};
}

std::string u32(unsigned value)
{
    return u16(value & 0xFFFF) + u16(value >> 16);
}

const std::string pcmGuid("\x01\x00\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 16);

std::string header(unsigned tag, unsigned channels, const std::string &extension, unsigned riffSize,
                   const std::string &before = {})
{
    const auto format = u16(tag) + u16(channels) + u32(48000) + u32(48000 * channels * 3) +
                        u16(channels * 3) + u16(24) + extension;
    return "RIFF" + u32(riffSize) + "WAVE" + before + "fmt " + u32(static_cast<unsigned>(format.size())) +
           format + "data" + u32(1800);
}

std::string extension(unsigned mask, const std::string &guid)
{
    return u16(22) + u16(24) + u32(mask) + guid;
}

} // namespace

TEST(WavHeader, FindsTheChunksBehindOthers)
{
    const auto bytes = header(1, 2, "", 2000, "JUNK" + u32(3) + "abc" + std::string(1, '\0'));
    const auto found = WavHeader::parse(bytes);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->format, 12U + 12U + 8U);
    EXPECT_EQ(found->data, bytes.size());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        EXPECT_FALSE(WavHeader::parse(bytes.substr(0, size))) << size;
    }
    EXPECT_FALSE(WavHeader::parse("RIFF" + u32(50) + "WAVE" + "data" + u32(8) + "audio"));
    EXPECT_FALSE(
        WavHeader::parse("RIFF" + u32(50) + "WAVE" + "fmt " + u32(0xFFFFFFFF) + std::string(64, 'x')));
}

TEST(WavHeader, OnlyTheTagChangesOnTheWayToThePlainForm)
{
    const auto bytes = header(0xFFFE, 6, extension(0x60F, pcmGuid), 2000);
    EXPECT_TRUE(isExtensiblePcm(bytes));
    auto expected = bytes;
    expected.replace(20, 2, u16(1));
    EXPECT_EQ(plainHeader(bytes), expected);

    auto floatGuid = pcmGuid;
    floatGuid[0] = 3;
    for (const auto &untouched : {header(0xFFFE, 2, extension(3, floatGuid), 9), header(1, 2, "", 9),
                                  header(3, 2, "", 9), std::string("FORM")}) {
        EXPECT_EQ(plainHeader(untouched), untouched);
    }
}

TEST(WavHeader, ManyChannelsGetTheirSpeakers)
{
    EXPECT_EQ(extensibleHeader(header(1, 6, "", 2000)), header(0xFFFE, 6, extension(0x3F, pcmGuid), 2024));
    EXPECT_EQ(extensibleHeader(header(1, 3, "", 0xFFFFFFFF)),
              header(0xFFFE, 3, extension(0x7, pcmGuid), 0xFFFFFFFF))
        << "the size of a stream stays unknown";
    // What the plain form left behind the tag is replaced, not kept twice.
    EXPECT_EQ(extensibleHeader(header(1, 4, extension(0x603, pcmGuid), 2000)),
              header(0xFFFE, 4, extension(0x33, pcmGuid), 2000));
    for (const auto &untouched :
         {header(1, 2, "", 9), header(0xFFFE, 6, extension(0x60F, pcmGuid), 9), std::string("x")}) {
        EXPECT_EQ(extensibleHeader(untouched), untouched);
    }
}

} // namespace kruv::adapters
