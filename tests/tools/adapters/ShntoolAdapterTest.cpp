// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ShntoolAdapter.h"

#include <gtest/gtest.h>
#include <ostream>

namespace kruv::adapters {

namespace {

const Arguments decoders{"-i", "flac H decode flac %f", "-i", "aiff H decode aiff %f",
                         "-i", "wv H decode wv %f",     "-i", "shn H decode shn %f",
                         "-i", "ape H decode ape %f",   "-i", "tta H decode tta %f"};

ShntoolPlan planOf(const Arguments &arguments)
{
    return planShntool(arguments, {[](const std::string &) { return false; },
                                   [](const std::string &path) {
                                       if (path.ends_with(".wv")) {
                                           return SourceKind::WavPack;
                                       }
                                       return path.find("24") != std::string::npos && !path.ends_with(".flac")
                                                  ? SourceKind::ExtensibleWav
                                                  : SourceKind::Direct;
                                   },
                                   "H"});
}

// The line that shntool is to get: the mode, our decoders, the rest.
Arguments line(const std::string &mode, const Arguments &rest)
{
    Arguments words{mode};
    words.insert(words.end(), decoders.begin(), decoders.end());
    words.insert(words.end(), rest.begin(), rest.end());
    return words;
}

struct Case
{
    Arguments given;
    Arguments expected; // behind the decoders
    std::vector<std::string> wantedNames;
};

[[maybe_unused]] void PrintTo(const Case &each, std::ostream *out)
{
    *out << testing::PrintToString(each.given);
}

class ShntoolLines : public testing::TestWithParam<Case>
{
};

} // namespace

TEST_P(ShntoolLines, ComeOutWhole)
{
    const auto plan = planOf(GetParam().given);
    EXPECT_EQ(plan.error, "");
    EXPECT_EQ(plan.arguments, line(GetParam().given.front(), GetParam().expected));
    std::vector<std::string> names;
    for (const auto &output : plan.outputs) {
        names.push_back(output.wantedName);
    }
    EXPECT_EQ(names, GetParam().wantedNames);
}

INSTANTIATE_TEST_SUITE_P(
    Writing, ShntoolLines,
    testing::Values(
        // Encoding to and decoding from SHN, as it is asked for
        Case{{"conv", "-o", "shn", "-P", "pct", "-O", "never", "-d", "/d", "/s/a.wav"},
             {"-o", "shn", "-P", "pct", "-O", "never", "-d", "/d", "--", "/s/a.wav"},
             {"a.shn"}},
        Case{{"conv", "-o", "aiff", "-P", "pct", "-O", "never", "-d", "/d", "/s/a.shn"},
             {"-o", "aiff", "-P", "pct", "-O", "never", "-d", "/d", "--", "/s/a.shn"},
             {"a.aiff"}},
        // FLAC through a custom encoder: it gets a header that knows the speakers
        Case{{"conv", "-P", "pct", "-O", "never", "-d", "/d", "-o", "cust ext=flac flac -5  -o %f -",
              "/s/A.APE"},
             {"-P", "pct", "-O", "never", "-o", "cust ext=flac H encode flac -5  -o %f -", "-d", "/d", "--",
              "/s/A.APE"},
             {"A.flac"}},
        Case{{"conv", "-P", "pct", "-O", "never", "-d", "/d", "-o", "cust ext=flac flac -8  -V  -o %f -",
              "/s/a.shn"},
             {"-P", "pct", "-O", "never", "-o", "cust ext=flac H encode flac -8  -V  -o %f -", "-d", "/d",
              "--", "/s/a.shn"},
             {"a.flac"}},
        Case{{"conv", "-P", "pct", "-O", "never", "-d", "/d", "-o", "cust ext=flac flac --lax -o %f -",
              "/s/a.shn"},
             {"-P", "pct", "-O", "never", "-o", "cust ext=flac H encode flac --lax -o %f -", "-d", "/d", "--",
              "/s/a.shn"},
             {"a.flac"}},
        // A decoder named as the encoder stands for the format
        Case{
            {"conv", "-o", "cust ext=aiff wvunpack %f -", "-P", "pct", "-O", "never", "-d", "/d", "/s/x.shn"},
            {"-o", "aiff", "-P", "pct", "-O", "never", "-d", "/d", "--", "/s/x.shn"},
            {"x.aiff"}},
        // fix: an encoder in separate words, no "-fixed", the given order
        Case{{"fix", "-P",   "pct", "-O", "never", "-k", "-d", "/d", "-o",        "cust",     "ext=flac",
              "{",   "flac", "-s",  "-8", "-o",    "%f", "-",  "}",  "/s/02.wav", "/s/01.aif"},
             {"-P", "pct", "-O", "never", "-k", "-o", "cust ext=flac H encode flac -s -8 -o %f -", "-z", "",
              "-r", "none", "-d", "/d", "--", "/s/02.wav", "/s/01.aif"},
             {"02.flac", "01.flac"}},
        Case{{"fix", "-P", "pct", "-O", "never", "-k", "-d", "/d", "-o", "wav", "/s/1.FLAC", "/s/2.flac"},
             {"-P", "pct", "-O", "never", "-k", "-o", "cust ext=wav H store %f", "-z", "", "-r", "none", "-d",
              "/d", "--", "/s/1.FLAC", "/s/2.flac"},
             {"1.wav", "2.wav"}},
        Case{{"join", "-o", "flac", "-n", "-d", "/d", "-O", "never", "/s/2.wav", "/s/1.wav"},
             {"-o", "flac ext=flac H encode flac -s -o %f -", "-n", "-O", "never", "-r", "none", "-d", "/d",
              "--", "/s/2.wav", "/s/1.wav"},
             {"joined.flac"}},
        Case{{"trim", "-d", "/d", "-o", "aiff", "-O", "never", "/s/a.b.aif", "/s/c"},
             {"-o", "aiff", "-O", "never", "-d", "/d", "--", "/s/a.b.aif", "/s/c"},
             {"a.b-trimmed.aiff", "c-trimmed.aiff"}},
        Case{{"pad", "-d", "/d", "-o", "shn", "-O", "never", "/s/a.wav"},
             {"-o", "shn", "-O", "never", "-d", "/d", "--", "/s/a.wav"},
             {"a-padded.shn"}},
        Case{{"strip", "-d", "/d", "-o", "shn", "-O", "never", "/s/a.WAV"},
             {"-o", "shn", "-O", "never", "-d", "/d", "--", "/s/a.WAV"},
             {"a-stripped.shn"}},
        // split never asks
        Case{{"split", "-f", "/p/points.cue", "-o", "shn", "-d", "/d", "/s/a.wav"},
             {"-f", "/p/points.cue", "-o", "shn", "-O", "never", "-d", "/d", "--", "/s/a.wav"},
             {}}));

INSTANTIATE_TEST_SUITE_P(
    Reading, ShntoolLines,
    testing::Values(Case{{"len", "/s/a.wav", "/s/b.flac"}, {"--", "/s/a.wav", "/s/b.flac"}, {}},
                    Case{{"info", "/s/a.wav"}, {"--", "/s/a.wav"}, {}},
                    Case{{"cmp", "/s/a.wav", "/s/b.wav"}, {"--", "/s/a.wav", "/s/b.wav"}, {}},
                    Case{{"cue", "-c", "/s/a.wav"}, {"-c", "--", "/s/a.wav"}, {}},
                    Case{{"hash", "-m", "a.wav", "-m.wav", "-lead.flac"},
                         {"-m", "--", "a.wav", "-m.wav", "-lead.flac"},
                         {}},
                    Case{{"hash", "- b.wav"}, {"--", "- b.wav"}, {}}));

TEST(ShntoolAdapter, LeavesAloneWhatItDoesNotKnow)
{
    for (const Arguments &arguments : {Arguments{}, Arguments{"-v"}, Arguments{"gen", "-l", "1:00"},
                                       Arguments{"len"}, Arguments{"conv", "-o"}}) {
        const auto plan = planOf(arguments);
        EXPECT_EQ(plan.arguments, arguments);
        EXPECT_TRUE(plan.runsAlone());
    }
}

TEST(ShntoolAdapter, ConvWithAnExactNameWritesThereOnly)
{
    auto plan =
        planOf({"conv", "-P", "pct", "-O", "always", "-o", "shn", "-n", "/t/Kruv-1.wav", "/s/a.flac"});
    EXPECT_EQ(plan.exactFile, "/t/Kruv-1.wav");
    EXPECT_TRUE(plan.replace);
    EXPECT_EQ(plan.arguments,
              line("conv", {"-P", "pct", "-O", "always", "-o", "shn", "-d", "/t", "--", "/s/a.flac"}));
    EXPECT_EQ(plan.arguments[plan.folderArgument], "/t");

    plan = planOf({"conv", "-P", "pct", "-O", "never", "-o", "cust ext=mp3 lame -m j -q 2 --abr 192 - %f",
                   "-d", "/d", "-n", "/d/a.mp3", "/s/a.aif"});
    EXPECT_FALSE(plan.replace);
    EXPECT_EQ(plan.exactFile, "/d/a.mp3");
    EXPECT_EQ(plan.arguments,
              line("conv", {"-P", "pct", "-O", "never", "-o", "cust ext=mp3 lame -m j -q 2 --abr 192 - %f",
                            "-d", "/d", "--", "/s/a.aif"}));

    EXPECT_NE(planOf({"conv", "-o", "wav", "-n", "/t/x.wav", "/s/a.shn", "/s/b.shn"}).error, "");
}

TEST(ShntoolAdapter, KnowsWhatTheToolMayCallAnOutput)
{
    const auto plan = planOf({"trim", "-d", "/d", "-o", "flac", "-O", "never", "/s/X.WAV"});
    ASSERT_EQ(plan.outputs.size(), 1U);
    EXPECT_EQ(plan.outputs[0].possibleNames[0], "X.WAV-trimmed.flac");
    EXPECT_EQ(plan.outputs[0].possibleNames[1], "X-trimmed.flac");
    EXPECT_FALSE(plan.oneResult);
    EXPECT_TRUE(planOf({"fix", "-o", "wav", "/s/a.wav"}).oneResult);
}

TEST(ShntoolAdapter, StandsInForSourcesTheToolRefuses)
{
    // Header modes need no decoding of a WAV; a WavPack file always does.
    auto plan = planOf({"len", "/s/a.wav", "/s/24.wav", "/s/b.wv"});
    ASSERT_EQ(plan.standIns.size(), 2U);
    EXPECT_EQ(plan.arguments[plan.standIns[0].argument], "/s/24.wav");
    EXPECT_TRUE(plan.standIns[0].headerOnly);
    EXPECT_EQ(plan.standIns[1].source, "/s/b.wv");
    EXPECT_FALSE(plan.standIns[1].headerOnly);
    EXPECT_FALSE(plan.runsAlone());

    plan = planOf({"hash", "-m", "24.wav"});
    ASSERT_EQ(plan.standIns.size(), 1U);
    EXPECT_FALSE(plan.standIns[0].headerOnly);
}

} // namespace kruv::adapters
