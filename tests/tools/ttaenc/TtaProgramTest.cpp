// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/LittleEndian.h"
#include "common/TestProcess.h"

#include <gtest/gtest.h>

namespace kruv::ttaenc {

using namespace tools::test;
using tools::WavFormat;

namespace {

std::string progress(const std::string &before, const std::string &after)
{
    std::string text;
    for (int i = 0; i <= 100; ++i) {
        text.append(before).append(std::to_string(i)).append(after);
    }
    return text + "\n";
}

} // namespace

TEST(TtaProgram, ChoosesItsModeByContent)
{
    const TemporaryFolder folder;
    const Bytes file = song(100000);
    // The extensions lie.
    const std::string wavPath = folder.write("song.tta", file);
    const std::string ttaPath = folder.path("-o.wav");
    const ProcessResult encoding = run("ttaenc", {wavPath, "-o", ttaPath});
    ASSERT_EQ(encoding.status, 0) << encoding.errors;
    EXPECT_EQ(encoding.errors, progress("Percent Progress: ", "\r"));
    EXPECT_TRUE(encoding.output.empty());
    const ProcessResult decoding = run("ttaenc", {"-o", folder.path("back"), ttaPath});
    EXPECT_EQ(decoding.status, 0);
    EXPECT_EQ(decoding.errors, progress("Percent Progress: ", "\r"));
    EXPECT_TRUE(readFile(folder.path("back")) == file);
    EXPECT_EQ(run("ttaenc", {folder.write("text", Bytes(100, 'x')), "-o", folder.path("none")}).status, 1);
    EXPECT_FALSE(std::filesystem::exists(folder.path("none")));
}

TEST(TtaProgram, WorksOnPipesAndNamesItsOutput)
{
    const TemporaryFolder folder;
    const Bytes file = song(60000);
    const std::string wavPath = folder.write("a song.wav", file);
    ASSERT_EQ(run("ttaenc", {wavPath}).status, 0);
    const Bytes stream = readFile(folder.path("a song.tta"));
    EXPECT_TRUE(run("ttaenc", {"-e", "-o", "-", wavPath}).output == stream);
    EXPECT_EQ(run("ttaenc", {"-e", "-o", folder.path("piped.tta"), "-"}, file).status, 0);
    EXPECT_TRUE(readFile(folder.path("piped.tta")) == stream);
    Bytes endless = file;
    tools::writeLe32(&endless[40], 0xFFFFFFFF);
    EXPECT_TRUE(run("ttaenc", {"-e", "-o", "-", "-"}, endless).output == stream);
    EXPECT_TRUE(run("ttaenc", {"-d", "-o", "-", folder.path("a song.tta")}).output == file);
    EXPECT_TRUE(run("ttaenc", {"-d", "-o", "-", "-"}, stream).output == file);
    EXPECT_EQ(run("ttaenc", {"-t", "-"}, stream).status, 0);
}

TEST(TtaProgram, TestsAndSaysWhatIsWrongAndWhere)
{
    const TemporaryFolder folder;
    const std::string path = folder.path("song.tta");
    ASSERT_EQ(run("ttaenc", {folder.write("song.wav", song(100000)), "-o", path}).status, 0);
    const ProcessResult good = run("ttaenc", {"-t", path});
    EXPECT_EQ(good.status, 0);
    EXPECT_EQ(good.errors, progress("", "% done\r"));

    Bytes bad = readFile(path);
    bad[bad.size() / 2] ^= 1;
    const std::string badPath = folder.write("bad.tta", bad);
    const ProcessResult damaged = run("ttaenc", {"-t", badPath});
    EXPECT_EQ(damaged.status, 1);
    EXPECT_NE(damaged.errors.find("frame 2 (at 0:01.04)"), std::string::npos) << damaged.errors;

    bad.resize(bad.size() / 2);
    const ProcessResult cut = run("ttaenc", {"-t", folder.write("cut.tta", bad)});
    EXPECT_EQ(cut.status, 1);
    EXPECT_NE(cut.errors.find("ends within frame 2 (at 0:01.04) of 3"), std::string::npos) << cut.errors;
}

TEST(TtaProgram, SkipsTagsAroundTheAudio)
{
    const TemporaryFolder folder;
    const Bytes file = song(5000);
    const Bytes stream = run("ttaenc", {"-e", "-o", "-", "-"}, file).output;
    // A tag of 200 bytes whose size has a byte of its own for every seven bits, with a footer.
    Bytes front = fromHex("494433040010"
                          "00000148");
    front.resize(10 + 200 + 10, 'T');
    const Bytes back = chunk("APETAGEX", 100) + chunk("TAG", 125);
    const std::string path = folder.write("tagged", front + stream + back);
    EXPECT_TRUE(run("ttaenc", {path, "-o", "-"}).output == file);
    EXPECT_EQ(run("ttaenc", {"-t", path}).status, 0);
    const ProcessResult fromTagged = run("ttaenc", {folder.write("wav", front + file), "-o", "-"});
    EXPECT_TRUE(fromTagged.output == stream);
}

TEST(TtaProgram, FailsWithAMessageAndLeavesNoFile)
{
    const TemporaryFolder folder;
    const std::string good = folder.write("good.wav", song(60000));
    Bytes wide = song(100);
    tools::writeLe16(&wide[32], 8);
    tools::writeLe16(&wide[34], 32);
    const std::string widePath = folder.write("wide.wav", wide);
    ASSERT_EQ(run("ttaenc", {good, "-o", folder.path("good.tta")}).status, 0);
    Bytes cut = readFile(folder.path("good.tta"));
    cut.resize(cut.size() - 20);
    const std::string cutPath = folder.write("cut.tta", cut);
    const auto before = folder.names();
    const std::string out = folder.path("out");
    const std::vector<std::string> rows[] = {
        {widePath, "-o", out},
        {cutPath, "-o", out},
        {"-e", cutPath, "-o", out},
        {"-d", good, "-o", out},
        {"-t", good},
        {folder.path("missing"), "-o", out},
        {good, "-o", folder.path("no-folder/out")},
        {good, "-o", good},
        {good, "-o", "/dev/full"},
        {good, "-o"},
        {"-e", "-d", good, "-o", out},
        {good, good, "-o", out},
        {"-z", good, "-o", out},
        {},
    };
    for (const auto &arguments : rows) {
        const ProcessResult result = run("ttaenc", arguments);
        EXPECT_EQ(result.status, 1) << testing::PrintToString(arguments);
        EXPECT_NE(result.errors.find("ttaenc: "), std::string::npos) << result.errors;
        EXPECT_TRUE(result.output.empty());
        EXPECT_EQ(folder.names(), before) << testing::PrintToString(arguments);
    }
    EXPECT_EQ(runInto("/dev/full", "ttaenc", {"-d", "-o", "-", folder.path("good.tta")}).status, 1);
}

TEST(TtaProgram, AgreesWithFfmpegBothWays)
{
    const TemporaryFolder folder;
    for (const WavFormat &format :
         {WavFormat{8000, 1, 8}, WavFormat{8000, 2, 8}, WavFormat{8000, 1, 16}, WavFormat{8000, 2, 16},
          WavFormat{8000, 6, 16}, WavFormat{8000, 1, 24}, WavFormat{8000, 2, 24}}) {
        const Bytes audio = everySignal(format, 5001);
        const std::string path = folder.write("in.wav", wavWithSpeakers(format, audio));
        const std::string ours = folder.path("ours.tta");
        const std::string theirs = folder.path("theirs.tta");
        const std::string name =
            std::to_string(format.bitsPerSample) + " bits, " + std::to_string(format.channels);
        ASSERT_EQ(run("ttaenc", {path, "-o", ours}).status, 0);
        EXPECT_TRUE(decodeWithFfmpeg(ours, rawFormatFor(format)) == audio) << name;
        ASSERT_EQ(run("ffmpeg", {"-v", "error", "-y", "-nostdin", "-i", path, "-c:a", "tta", theirs}).status,
                  0);
        EXPECT_TRUE(run("ttaenc", {theirs, "-o", "-"}).output == readFile(path)) << name;
        // Tags apart, which ffmpeg puts behind, the format leaves no choice.
        Bytes start = readFile(theirs);
        const Bytes own = readFile(ours);
        ASSERT_GE(start.size(), own.size());
        start.resize(own.size());
        EXPECT_TRUE(start == own) << name;
    }
}

} // namespace kruv::ttaenc
