// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShntoolAdapter.h"

#include <gtest/gtest.h>
#include <sstream>

namespace kruv::adapters {

namespace {

// Arguments written one after the other, bars between them.
Arguments words(const std::string &line)
{
    std::istringstream stream(line);
    Arguments result;
    for (std::string word; std::getline(stream, word, '|');) {
        result.push_back(word);
    }
    return result;
}

ShntoolPlan planOf(const std::string &line)
{
    const auto kindOf = [](const std::string &) { return SourceKind::Direct; };
    return planShntool(words(line), {[](const std::string &) { return false; }, kindOf, "H"});
}

// The line that shntool is to get: the mode, our decoders, the rest.
Arguments toolLine(const std::string &mode, const std::string &rest)
{
    return words(mode +
                 "|-i|flac H decode flac %f|-i|aiff H decode aiff %f|-i|wv H decode wv %f"
                 "|-i|shn H decode shn %f|-i|ape H decode ape %f|-i|tta H decode tta %f|" +
                 rest);
}

} // namespace

TEST(ShntoolAdapter, CompletesEveryLine)
{
    struct Case
    {
        const char *mode;
        const char *given;
        const char *expected; // behind the decoders
        const char *wantedNames;
    };
    const Case cases[] = {
        {"conv", "-o|shn|-P|pct|-O|never|-d|/d|/s/a.wav", "-o|shn|-P|pct|-O|never|-d|/d|--|/s/a.wav",
         "a.shn"},
        // FLAC through a custom encoder: it gets a header that knows the speakers
        {"conv", "-O|never|-d|/d|-o|cust ext=flac flac -8  -V  -o %f -|/s/A.APE",
         "-O|never|-o|cust ext=flac H encode flac -8  -V  -o %f -|-d|/d|--|/s/A.APE", "A.flac"},
        // A decoder named as the encoder stands for the format
        {"conv", "-o|cust ext=aiff wvunpack %f -|-O|never|-d|/d|/s/x.shn",
         "-o|cust ext=aiff H store-aiff %f|-O|never|-d|/d|--|/s/x.shn", "x.aiff"},
        // fix: an encoder in separate words, no "-fixed", the given order
        {"fix", "-O|never|-k|-d|/d|-o|cust|ext=flac|{|flac|-s|-8|-o|%f|-|}|/s/02.wav|/s/01.aif",
         "-O|never|-k|-o|cust ext=flac H encode flac -s -8 -o %f -|-z||-r|none|-d|/d|--|/s/02.wav|/s/01.aif",
         "02.flac|01.flac"},
        {"fix", "-O|never|-k|-d|/d|-o|wav|/s/1.FLAC|/s/2.flac",
         "-O|never|-k|-o|cust ext=wav H store %f|-z||-r|none|-d|/d|--|/s/1.FLAC|/s/2.flac", "1.wav|2.wav"},
        {"join", "-o|flac|-n|-d|/d|-O|never|/s/2.wav|/s/1.wav",
         "-o|flac ext=flac H encode flac -s -o %f -|-n|-O|never|-r|none|-d|/d|--|/s/2.wav|/s/1.wav",
         "joined.flac"},
        {"trim", "-d|/d|-o|aiff|-O|never|/s/a.b.aif|/s/c",
         "-o|cust ext=aiff H store-aiff %f|-O|never|-d|/d|--|/s/a.b.aif|/s/c",
         "a.b-trimmed.aiff|c-trimmed.aiff"},
        {"pad", "-d|/d|-o|shn|-O|never|/s/a.wav", "-o|shn|-O|never|-d|/d|--|/s/a.wav", "a-padded.shn"},
        {"strip", "-d|/d|-o|shn|-O|never|/s/a.WAV", "-o|shn|-O|never|-d|/d|--|/s/a.WAV", "a-stripped.shn"},
        // split never asks
        {"split", "-f|/p/points.cue|-o|shn|-d|/d|/s/a.wav",
         "-f|/p/points.cue|-o|shn|-O|never|-d|/d|--|/s/a.wav", ""},
        {"len", "/s/a.wav|/s/b.flac", "--|/s/a.wav|/s/b.flac", ""},
        {"cue", "-c|/s/a.wav", "-c|--|/s/a.wav", ""},
        {"hash", "-m|a.wav|-m.wav|-lead.flac", "-m|--|a.wav|-m.wav|-lead.flac", ""},
        {"hash", "- b.wav", "--|- b.wav", ""},
    };
    for (const auto &[mode, given, expected, wantedNames] : cases) {
        const auto plan = planOf(std::string(mode) + "|" + given);
        EXPECT_EQ(plan.error, "");
        EXPECT_EQ(plan.arguments, toolLine(mode, expected));
        Arguments names;
        for (const auto &output : plan.outputs) {
            names.push_back(output.wantedName);
        }
        EXPECT_EQ(names, words(wantedNames)) << mode << ' ' << given;
    }
}

TEST(ShntoolAdapter, LeavesAloneWhatItDoesNotKnow)
{
    for (const char *line : {"", "-v", "gen|-l|1:00", "len", "conv|-o"}) {
        const auto plan = planOf(line);
        EXPECT_EQ(plan.arguments, words(line));
        EXPECT_TRUE(plan.runsAlone());
    }
}

TEST(ShntoolAdapter, ConvWithAnExactNameWritesThereOnly)
{
    auto plan = planOf("conv|-O|always|-o|shn|-n|/t/Kruv-1.wav|/s/a.flac");
    EXPECT_EQ(plan.exactFile, "/t/Kruv-1.wav");
    EXPECT_TRUE(plan.replace);
    EXPECT_EQ(plan.arguments, toolLine("conv", "-O|always|-o|shn|-d|/t|--|/s/a.flac"));
    EXPECT_EQ(plan.arguments[plan.folderArgument], "/t");

    plan = planOf("conv|-O|never|-o|cust ext=mp3 lame -m j - %f|-d|/d|-n|/d/a.mp3|/s/a.aif");
    EXPECT_FALSE(plan.replace);
    EXPECT_EQ(plan.exactFile, "/d/a.mp3");
    EXPECT_EQ(plan.arguments, toolLine("conv", "-O|never|-o|cust ext=mp3 lame -m j - %f|-d|/d|--|/s/a.aif"));

    EXPECT_NE(planOf("conv|-o|wav|-n|/t/x.wav|/s/a.shn|/s/b.shn").error, "");
}

} // namespace kruv::adapters
