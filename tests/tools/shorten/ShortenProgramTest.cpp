// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/LittleEndian.h"
#include "common/TestProcess.h"

#include <gtest/gtest.h>

namespace kruv::shorten {

using namespace tools::test;
using tools::WavFormat;

TEST(ShortenProgram, KnowsAllFormsOfItsCommandLine)
{
    const TemporaryFolder folder;
    const Bytes file = song(3000);
    const std::string wavPath = folder.write("a song's \"name\" 100%.wav", file);
    const std::string shnPath = folder.path("out.shn");
    ASSERT_EQ(run("shorten", {wavPath, shnPath}).status, 0);
    const Bytes stream = readFile(shnPath);
    EXPECT_EQ(run("shorten", {"-", "-"}, file).output, stream);
    EXPECT_EQ(run("shorten", {}, file).output, stream);
    EXPECT_EQ(run("shorten", {"-", folder.path("piped.shn")}, file).status, 0);
    EXPECT_EQ(readFile(folder.path("piped.shn")), stream);

    EXPECT_EQ(run("shorten", {"-x", shnPath, "-"}).output, file);
    EXPECT_EQ(run("shorten", {"-x", "-", "-"}, stream).output, file);
    EXPECT_EQ(run("shorten", {"-x", "-"}, stream).output, file);
    EXPECT_EQ(run("shorten", {"-x", "--", shnPath, folder.path("back.wav")}).status, 0);
    EXPECT_EQ(readFile(folder.path("back.wav")), file);
    EXPECT_EQ(run("shorten", {"-x", shnPath}).status, 0);
    EXPECT_EQ(readFile(folder.path("out")), file);
    EXPECT_EQ(readFile(shnPath), stream) << "the input stays";

    for (const char *option : {"-h", "--help", "-v", "--version"}) {
        EXPECT_EQ(run("shorten", {option}).status, 0) << option;
    }
}

TEST(ShortenProgram, FailsWithAMessageAndLeavesNoFile)
{
    const TemporaryFolder folder;
    const WavFormat deep{44100, 2, 24};
    const std::string deepPath = folder.write("deep.wav", wav(deep, pcm(Signal::Noise, deep, 100)));
    Bytes floatFile = song(100);
    tools::writeLe16(&floatFile[20], 3);
    const std::string floatPath = folder.write("float.wav", floatFile);
    const std::string good = folder.write("good.wav", song(100));
    ASSERT_EQ(run("shorten", {good, folder.path("good.shn")}).status, 0);
    Bytes cut = readFile(folder.path("good.shn"));
    cut.resize(cut.size() - 20);
    const std::string cutPath = folder.write("cut.shn", cut);
    const auto before = folder.names();
    const std::string out = folder.path("out");
    const std::vector<std::string> rows[] = {
        {deepPath, out},
        {floatPath, out},
        {"-x", cutPath, out},
        {"-x", good, out},
        {"-x", good},
        {folder.path("missing.wav"), out},
        {good, folder.path("no-folder/out")},
        {good, good},
        {good, "/dev/full"},
        {"-q", good, out},
        {good, out, out},
    };
    for (const auto &arguments : rows) {
        const ProcessResult result = run("shorten", arguments);
        EXPECT_EQ(result.status, 1) << arguments.back();
        EXPECT_TRUE(result.errors.starts_with("shorten: ")) << result.errors;
        EXPECT_TRUE(result.output.empty());
        EXPECT_EQ(folder.names(), before) << arguments.front();
    }
    EXPECT_EQ(runInto("/dev/full", "shorten", {"-x", folder.path("good.shn"), "-"}).status, 1);
    const ProcessResult partly = run("shorten", {"-x", cutPath, "-"});
    EXPECT_EQ(partly.status, 1);
    EXPECT_GE(partly.output.size(), 44u) << "a pipe gets what could be decoded";
}

TEST(ShortenProgram, IsUnderstoodByFfmpeg)
{
    const TemporaryFolder folder;
    for (const WavFormat &format : {WavFormat{8000, 1, 8}, WavFormat{8000, 2, 8}, WavFormat{44100, 1, 16},
                                    WavFormat{44100, 2, 16}, WavFormat{48000, 6, 16}}) {
        const Bytes audio = everySignal(format, 2001);
        const std::string path =
            folder.write("in.wav", wav(format, audio, chunk("LIST", 33), chunk("tail", 9)));
        ASSERT_EQ(run("shorten", {path, folder.path("out.shn")}).status, 0);
        EXPECT_TRUE(decodeWithFfmpeg(folder.path("out.shn"), rawFormatFor(format)) == audio)
            << format.bitsPerSample << " bits, " << format.channels << " channels";
    }
}

} // namespace kruv::shorten
