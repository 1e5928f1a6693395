// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "SplitPoints.h"

#include <gtest/gtest.h>

namespace kruv::adapters {

TEST(SplitPoints, TimesCountAtTheAudiosOwnRate)
{
    const PcmLayout layout{48000, 6};
    EXPECT_EQ(splitPointsInBytes("0:01\r\n 1:00.000\n\n0:00.15\n288000", layout),
              "288000\n17280000\n57600\n288000\n");
    EXPECT_EQ(splitPointsInBytes(
                  "\xEF\xBB\xBF"
                  "FILE \"a INDEX 01 9:9:9.wav\" WAVE\r\n  TRACK 01 AUDIO\r\n    INDEX 01 00:00:00\r\n"
                  "  TRACK 02 AUDIO\r\n    INDEX 00 00:01:70\r\n    INDEX 01 00:02:00\r\n",
                  layout),
              "0\n576000\n");
    // One CD frame is 588 frames of audio at 44.1 kHz; at 32 kHz it is 426 2/3.
    EXPECT_EQ(splitPointsInBytes("0:00.01", {44100, 6}), "3528\n");
    EXPECT_EQ(splitPointsInBytes("0:00.01", {32000, 4}), "1708\n");
}

TEST(SplitPoints, WhatIsNoPointIsLeftToTheTool)
{
    for (const char *text : {"", "abc", "0:61", "0:01.75", "0:01.1234", "1:", "12x", ":5", "0:01:00",
                             "INDEX 01 xx", "0:01\n99999999999:00\n", "\xFF\xFE\x30"}) {
        EXPECT_EQ(splitPointsInBytes(text, {48000, 6}), std::nullopt) << text;
    }
}

TEST(SplitPoints, SheetsOfAnyMakeBecomePlain)
{
    const std::string plain = "TITLE \"?\"\r\nINDEX 01 00:01:00\n";
    const auto wide = [&plain](bool bigEndian, const std::string &mark) {
        std::string text = mark;
        for (const char each : plain) {
            const bool title = each == '?';
            text += bigEndian ? std::string{title ? '\x65' : '\0', title ? '\xE5' : each}
                              : std::string{title ? '\xE5' : each, title ? '\x65' : '\0'};
        }
        return text;
    };
    for (const auto &text :
         {plain, wide(false, "\xFF\xFE"), wide(true, "\xFE\xFF"), wide(false, ""), wide(true, "")}) {
        EXPECT_EQ(plainSplitPoints(text), plain);
    }
    EXPECT_EQ(plainSplitPoints("0:01\r\r0:02\r \r"), "0:01\n0:02\n");
    EXPECT_EQ(plainSplitPoints(""), "");
}

} // namespace kruv::adapters
