// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "TextReplacer.h"

#include <gtest/gtest.h>

namespace kruv::adapters {

TEST(TextReplacer, WorksWhereverTheStreamIsCut)
{
    const std::string text =
        "Converting [/tmp/.k-1/full/a.wav] --> [/d/.k-2/a.WAV.flac] : /d/.k-2/ /d/.k-2/a.WA /.k-";
    const std::string expected = "Converting [/a.wav] --> [/d/a.flac] : /d/ /d/a.WA /.k-";
    const std::vector<Replacement> replacements{
        {"/tmp/.k-1/full", ""}, {"/.k-2", ""}, {"/.k-2/a.WAV.flac", "/a.flac"}, {"", "never"}};
    for (std::size_t first = 0; first <= text.size(); ++first) {
        for (std::size_t second = first; second <= text.size(); ++second) {
            TextReplacer replacer(replacements);
            auto result = replacer.feed(text.substr(0, first));
            result += replacer.feed(text.substr(first, second - first));
            result += replacer.feed(text.substr(second));
            result += replacer.flush();
            ASSERT_EQ(result, expected) << first << ' ' << second;
        }
    }
}

TEST(TextReplacer, HoldsBackNothingThatIsDecided)
{
    TextReplacer replacer(std::vector<Replacement>{{"/.k-2", ""}});
    EXPECT_EQ(replacer.feed("  7% "), "  7% ");
    EXPECT_EQ(replacer.feed("[/d/.k-"), "[/d");
    EXPECT_EQ(replacer.feed("3"), "/.k-3");
}

} // namespace kruv::adapters
