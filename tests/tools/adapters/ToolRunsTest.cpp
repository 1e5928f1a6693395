// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "ToolRun.h"

#include <fstream>
#include <gtest/gtest.h>

namespace kruv::adapters {

namespace {

std::string big32(std::uint32_t value)
{
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

// A tree with the shape of an authored one: the track table knows where its author expected the audio to lie.
void makeDvdTree(const std::string &folder, std::uint32_t expectedTableSector)
{
    constexpr std::size_t sector = 2048;
    const auto object = expectedTableSector + 64 + 6 + 2;
    std::string table = std::string("DVDAUDIOSAPP\0\x02\0\x12", 16);
    for (const std::uint32_t first : {0U, 100U}) {
        table +=
            std::string(40, 'r') + big32(object + first) + big32(object + first) + big32(object + first + 99);
    }
    table.resize(16384);
    std::filesystem::create_directories(folder + "/AUDIO_TS");
    std::filesystem::create_directories(folder + "/VIDEO_TS");
    for (int i = 0; i < 8; ++i) {
        std::ofstream(folder + "/AUDIO_TS/AUDIO_PP.IFO", std::ios::app) << table;
    }
    for (const char *name : {"AUDIO_TS.IFO", "AUDIO_TS.BUP", "ATS_01_0.IFO", "ATS_01_0.BUP"}) {
        writeFile(folder + "/AUDIO_TS/" + name, std::string((name[1] == 'U' ? 3 : 2) * sector, 'I'));
    }
    writeFile(folder + "/AUDIO_TS/ATS_01_1.AOB", "first object" + std::string(300 * sector - 12, 'A'));
}

class ToolRunsTest : public testing::Test
{
protected:
    std::string path(const std::string &name) const { return folder.path(name); }

    const tools::test::TemporaryFolder folder;
};

} // namespace

TEST_F(ToolRunsTest, FlacDecodesWithForeignMetadataWhereThereIsSome)
{
    if (!haveTools({"flac"})) {
        GTEST_SKIP();
    }
    const auto audio = TestAudio::noise(5000, 2, 16);
    writeWav(path("in.wav"), audio);
    auto original = contentOf(path("in.wav")) + std::string("LIST\x08\0\0\0INFOabcd", 16);
    original[4] = static_cast<char>(original[4] + 16); // no carry: the size is 20036 = 0x4E44
    writeFile(path("in.wav"), original);
    ASSERT_EQ(runTool("flac -s --keep-foreign-metadata", {path("in.wav"), "-o", path("with.flac")}).status,
              0);
    ASSERT_EQ(runTool("flac -s", {path("in.wav"), "-o", path("without.flac")}).status, 0);
    const auto decode = [this](const std::string &from, const std::string &to, const std::string &more) {
        return runTool("flac -d --keep-foreign-metadata" + more, {path(from), "-o", path(to)}).status;
    };
    EXPECT_EQ(decode("with.flac", "with.wav", ""), 0);
    EXPECT_TRUE(contentOf(path("with.wav")) == original);
    EXPECT_EQ(decode("without.flac", "without.wav", ""), 0);
    EXPECT_TRUE(pcmOf(path("without.wav")) == audio.samples);
    EXPECT_EQ(decode("with.flac", "other.aiff", " --force-aiff-format"), 0)
        << "made from the other container";
    EXPECT_TRUE(pcmOf(path("other.aiff")) == audio.samples);
    EXPECT_EQ(decode("without.flac", "without.wav", ""), 1) << "an existing output is never replaced";
}

TEST_F(ToolRunsTest, WvunpackWritesWavAndKeepsOriginalHeaders)
{
    if (!haveTools({"wavpack", "wvunpack", "sox"})) {
        GTEST_SKIP();
    }
    const auto audio = TestAudio::noise(5000, 2, 24);
    writeWav(path("in.wav"), audio);
    const auto original = contentOf(path("in.wav")) + std::string("junkbehind");
    writeFile(path("in.wav"), original);
    ASSERT_EQ(runTool("sox -D", {path("in.wav"), path("in.aif")}).status, 0);
    ASSERT_EQ(runTool("wavpack -f", {path("in.wav"), "-o", path("wav.wv")}).status, 0);
    ASSERT_EQ(runTool("wavpack -f", {path("in.aif"), "-o", path("aif.wv")}).status, 0);

    EXPECT_EQ(runTool("wvunpack", {path("wav.wv"), "-o", path("wav.wav")}).status, 0);
    EXPECT_TRUE(contentOf(path("wav.wav")) == original);
    EXPECT_EQ(runTool("wvunpack", {path("aif.wv"), "-o", path("aif.wav")}).status, 0);
    EXPECT_TRUE(contentOf(path("aif.wav")).starts_with("RIFF"));
    EXPECT_TRUE(pcmOf(path("aif.wav"), 24) == audio.samples);

    const auto again = runTool("wvunpack", {path("wav.wv"), "-o", path("wav.wav")});
    EXPECT_NE(again.status, 0);
    EXPECT_NE(again.output.find("(yes/no/all)?"), std::string::npos) << again.output;
    EXPECT_EQ(runTool("wvunpack", {path("wav.wv"), "-y", "-o", path("wav.wav")}).status, 0);
    EXPECT_EQ(runTool("wvunpack -v", {path("aif.wv")}).status, 0);
}

TEST_F(ToolRunsTest, MkisofsWritesADvdAudioImageWithRightPointers)
{
    if (!haveTools({"mkisofs"})) {
        GTEST_SKIP();
    }
    constexpr std::size_t sector = 2048;
    for (const std::string tree : {"DVD-AUDIO", "it's a \"new\nline\" %/-T"}) {
        makeDvdTree(path(tree), 100); // authored for another place than it gets
        const auto result = runTool("mkisofs -o", {path("image.iso"), "-dvd-audio", path(tree)});
        ASSERT_EQ(result.status, 0) << result.output;
        EXPECT_NE(result.output.find("extents written"), std::string::npos);
        const auto image = contentOf(path("image.iso"));
        EXPECT_NE(image.find("NSR02"), std::string::npos) << "no UDF side";
        const auto table = image.find("DVDAUDIOSAPP");
        const auto object = image.find("first object");
        ASSERT_NE(object, std::string::npos);
        EXPECT_EQ(table % sector, 0U);
        EXPECT_EQ(object, table + (64 + 3 + 3 + 2) * sector) << "not one behind the other";
        for (std::size_t copy = 0; copy < 8; ++copy) {
            const auto fields = image.substr(table + copy * 16384 + 16 + 52 + 40, 12);
            const auto first = static_cast<std::uint32_t>(object / sector) + 100;
            EXPECT_EQ(fields, big32(first) + big32(first) + big32(first + 99)) << copy;
        }
        std::filesystem::remove(path("image.iso"));
    }
}

TEST_F(ToolRunsTest, MkisofsLeavesNoHalfImage)
{
    if (!haveTools({"mkisofs"})) {
        GTEST_SKIP();
    }
    writeFile(path("image.iso"), "the last one");
    makeDvdTree(path("T"), 278);
    std::filesystem::create_directories(path("none"));
    EXPECT_EQ(runTool("mkisofs -o", {path("image.iso"), "-dvd-audio", path("none")}).status, 2);
    // A table that is none: the tool itself succeeds, the check does not.
    writeFile(path("T/AUDIO_TS/AUDIO_PP.IFO"), std::string(131072, 'x'));
    const auto result = runTool("mkisofs -o", {path("image.iso"), "-dvd-audio", path("T")});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("mkisofs: the track table"), std::string::npos) << result.output;
    EXPECT_EQ(contentOf(path("image.iso")), "the last one");
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"T", "image.iso", "none"}));
}

TEST_F(ToolRunsTest, AMissingToolIsNamedWithItsPackage)
{
    // env(1) sets a PATH without the real tools for the adapter.
    for (const auto &[tool, package] :
         {std::pair{"shntool", "shntool"}, {"mkisofs", "genisoimage"}, {"flac", "flac"}}) {
        const auto result = runTool("/usr/bin/env PATH=/nowhere",
                                    {getenv("KRUV_RESOURCES") + std::string("/") + tool, "len"});
        EXPECT_EQ(result.status, 127);
        EXPECT_NE(result.output.find(std::string("\"") + package + "\""), std::string::npos) << result.output;
    }
}

} // namespace kruv::adapters
