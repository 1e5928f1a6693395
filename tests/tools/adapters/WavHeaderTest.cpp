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

std::string header(unsigned tag, unsigned channels, const std::string &extension, unsigned riffSize,
                   const std::string &before = {})
{
    const auto format = u16(tag) + u16(channels) + u32(48000) + u32(48000 * channels * 3) +
                        u16(channels * 3) + u16(24) + extension;
    return "RIFF" + u32(riffSize) + "WAVE" + before + "fmt " + u32(static_cast<unsigned>(format.size())) +
           format + "data" + u32(1800);
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

} // namespace kruv::adapters
