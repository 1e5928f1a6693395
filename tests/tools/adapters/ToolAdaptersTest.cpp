// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Cdda2wavAdapter.h"
#include "Decoding.h"
#include "FlacAdapter.h"
#include "MkisofsAdapter.h"
#include "WvunpackAdapter.h"

#include <gtest/gtest.h>

namespace kruv::adapters {

namespace {

const auto nothingExists = [](const std::string &) { return false; };

} // namespace

TEST(FlacAdapter, AsksForForeignMetadataOnlyWhereThereIsSome)
{
    EXPECT_EQ(flacArguments(
                  {"-d", "--keep-foreign-metadata", "-F", "--force-aiff-format", "/a.flac", "-o", "/a.aiff"},
                  nothingExists),
              (Arguments{"-d", "--keep-foreign-metadata-if-present", "-F", "--force-aiff-format", "/a.flac",
                         "-o", "/a.aiff"}));
    // Encoding must fail when it can't keep what it was told to keep.
    const Arguments encoding{"-8", "--keep-foreign-metadata", "-V", "-f", "/a.wav", "-o", "/a.flac"};
    EXPECT_EQ(flacArguments(encoding, nothingExists), encoding);
    const Arguments lax{"--lax", "--keep-foreign-metadata", "/d.wav", "-o", "/d.flac"};
    EXPECT_EQ(flacArguments(lax, nothingExists), lax);
}

TEST(FlacAdapter, TakesAnExistingDashNameForAFile)
{
    const auto exists = [](const std::string &name) { return name == "-t.flac"; };
    EXPECT_EQ(flacArguments({"-t", "-t.flac"}, exists), (Arguments{"-t", "./-t.flac"}));
    EXPECT_EQ(flacArguments({"-t", "-x.flac", "--until=1.0"}, exists),
              (Arguments{"-t", "-x.flac", "--until=1.0"}));
}

TEST(WvunpackAdapter, ForcesWavOnlyWhereAnotherContainerWouldComeOut)
{
    const auto adapted = [](const Arguments &arguments) {
        return wvunpackArguments(arguments, nothingExists,
                                 [](const std::string &path) { return path.starts_with("/aiff"); });
    };
    EXPECT_EQ(adapted({"/aiff.wv", "-o", "/x.wav"}), (Arguments{"--wav", "/aiff.wv", "-o", "/x.wav"}));
    EXPECT_EQ(adapted({"/aiff.wv", "-y", "-o", "/x.WAV"}),
              (Arguments{"--wav", "/aiff.wv", "-y", "-o", "/x.WAV"}));
    EXPECT_EQ(adapted({"-q", "/aiff.wv", "-o", "-"}), (Arguments{"--wav", "-q", "/aiff.wv", "-o", "-"}));
    for (const Arguments &untouched :
         {Arguments{"/made-from.wv", "-o", "/x.wav", "-y"}, Arguments{"-v", "/aiff.wv"},
          Arguments{"/aiff.wv", "-o", "/x.aif"}, Arguments{"-r", "/aiff.wv", "-o", "-"},
          Arguments{"", "-o", "x.wav"}}) {
        EXPECT_EQ(adapted(untouched), untouched);
    }
}

TEST(MkisofsAdapter, MakesADvdAudioImageFromInsideTheTree)
{
    const auto isTree = [](const std::string &path) { return path == "/o/DVD-AUDIO"; };
    const auto plan = planMkisofs({"-o", "/o/image.iso", "-dvd-audio", "/o/DVD-AUDIO"}, isTree);
    EXPECT_TRUE(plan.dvdAudio);
    EXPECT_EQ(plan.error, "");
    EXPECT_NE(planMkisofs({"-o", "/o/image.iso", "-dvd-audio", "/o/other"}, isTree).error, "");
    const Arguments data{"-R", "-J", "-o", "x.iso", "/o/DVD-AUDIO"};
    EXPECT_EQ(planMkisofs(data, isTree).arguments, data);
    EXPECT_FALSE(planMkisofs(data, isTree).dvdAudio);
}

TEST(MkisofsAdapter, OrdersTheFilesAsOnTheDisc)
{
    const auto order =
        dvdAudioOrder({"ATS_01_0.BUP", "ATS_01_0.IFO", "ATS_01_1.AOB", "ATS_01_2.AOB", "ATS_02_0.IFO",
                       "AUDIO_PP.IFO", "AUDIO_TS.BUP", "AUDIO_TS.IFO", "notes.txt", ".."});
    EXPECT_EQ(order,
              (std::vector<std::string>{"AUDIO_PP.IFO", "AUDIO_TS.IFO", "AUDIO_TS.BUP", "ATS_01_0.IFO",
                                        "ATS_01_1.AOB", "ATS_01_2.AOB", "ATS_01_0.BUP", "ATS_02_0.IFO"}));
    EXPECT_EQ(sortFileText({"AUDIO_PP.IFO", "AUDIO_TS.IFO"}),
              "./AUDIO_TS/AUDIO_PP.IFO 20000\n./AUDIO_TS/AUDIO_TS.IFO 19999\n");
}

TEST(Cdda2wavAdapter, PutsTheDeviceInPlaceOfTheProvider)
{
    const std::vector<OpticalDrive> drives{{"sr0", DriveKind::Cd}, {"sr1", DriveKind::Cd}};
    const auto plan = planCdda2wav(
        {"-B", "-L", "1", "-H", "-t", "3+12", "-paranoia", "-Owav", "dev=IOCompactDiscServices/2"}, drives);
    EXPECT_EQ(plan.arguments,
              (Arguments{"-B", "-L", "1", "-H", "-t", "3+12", "-paranoia", "-Owav", "dev=/dev/sr1"}));
    EXPECT_EQ(plan.error, "");
    EXPECT_EQ(planCdda2wav({"dev=/dev/sr7"}, drives).arguments, (Arguments{"dev=/dev/sr7"}));
    EXPECT_EQ(planCdda2wav({"dev=/dev/sr7"}, {}).error, "");
    EXPECT_NE(planCdda2wav({"dev=IOCompactDiscServices/3"}, drives).error, "");
    EXPECT_NE(planCdda2wav({"dev="}, drives).error, "") << "two drives: no guessing";
}

TEST(PcmPipe, NamesAreNeverTakenForOptionsOrCommands)
{
    for (const char *format : {"flac", "aiff", "wv", "shn", "ape", "tta"}) {
        for (const std::string name : {"-lead", "|reboot"}) {
            const auto call = decoderCall(format, name, true);
            EXPECT_NE(std::find(call.begin(), call.end(), "./" + name), call.end()) << format;
            EXPECT_EQ(std::find(call.begin(), call.end(), name), call.end()) << format;
        }
    }
    EXPECT_EQ(decoderCall("wv", "/x.wv", true)[1], "--wav");
    EXPECT_NE(decoderCall("wv", "/x.wv", false)[1], "--wav");
}

} // namespace kruv::adapters
