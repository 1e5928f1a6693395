// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AobReader.h"
#include "common/TestProcess.h"
#include "common/ToolError.h"
#include "dvda/AudioTree.h"
#include "dvda/InfoFiles.h"
#include "dvda/Options.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace kruv::dvda::test {
namespace {

namespace fs = std::filesystem;
using namespace tools::test;
using tools::WavFormat;

const std::vector<std::string> completeTree = {"ATS_01_0.BUP", "ATS_01_0.IFO", "ATS_01_1.AOB",
                                               "AUDIO_PP.IFO", "AUDIO_TS.BUP", "AUDIO_TS.IFO"};

std::vector<std::string> namesIn(const fs::path &folder)
{
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// The audio of an AOB as one run of samples of one format.
Bytes audioOf(const std::string &aob, unsigned bits)
{
    const Bytes file = readFile(aob);
    EXPECT_EQ(file.size() % sectorBytes, 0U);
    Bytes stored;
    unsigned assignment = 0;
    for (std::size_t i = 0; i < file.size(); i += sectorBytes) {
        const ReadPack pack = readPack(std::span(file).subspan(i, sectorBytes));
        stored.insert(stored.end(), pack.audio.begin(), pack.audio.end());
        assignment = pack.assignment;
    }
    return unpack(stored, bits, assignment);
}

} // namespace

TEST(Dvda, TakesWavAiffAndFlacAlike)
{
    const TemporaryFolder folder;
    const WavFormat format{96000, 2, 24};
    const Bytes audio = pcm(Signal::Noise, format, 20000);
    const std::string original = folder.write("it's 100%.wav", wav(format, audio, chunk("LIST", 33)));
    const std::string flac = folder.path("-odd name\n.flac");
    ASSERT_EQ(run("flac", {"-s", "-o", flac, "--", original}).status, 0);
    const std::string aiff = folder.path("b.aiff");
    ASSERT_EQ(run("ffmpeg", {"-v", "error", "-i", original, "-c:a", "pcm_s24be", aiff}).status, 0);

    const ProcessResult result = run("dvda", {"-l", folder.path("log.txt"), "-P0", "-S", "-f", "-o",
                                              folder.path("DVD-AUDIO"), "-g", original, aiff, flac});
    ASSERT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(std::string(result.output.begin(), result.output.end()),
              "[Kruv]  Processing 1::" + original + "\n[Kruv]  Processing 2::" + aiff +
                  "\n[Kruv]  Processing 3::" + flac + "\n");
    EXPECT_EQ(result.errors, "");
    EXPECT_FALSE(readFile(folder.path("log.txt")).empty());
    EXPECT_EQ(namesIn(folder.path("DVD-AUDIO")), (std::vector<std::string>{"AUDIO_TS", "VIDEO_TS"}));
    const std::string tree = folder.path("DVD-AUDIO/AUDIO_TS/");
    EXPECT_EQ(namesIn(tree), completeTree);
    EXPECT_TRUE(audioOf(tree + "ATS_01_1.AOB", 24) == audio + audio + audio);
    EXPECT_EQ(readFile(tree + "ATS_01_0.IFO"), readFile(tree + "ATS_01_0.BUP"));
    EXPECT_EQ(readFile(tree + "AUDIO_TS.IFO"), readFile(tree + "AUDIO_TS.BUP"));
}

TEST(Dvda, WidensDepthsThatADiscDoesNotHave)
{
    const TemporaryFolder folder;
    const WavFormat format{44100, 1, 8};
    const Bytes audio = pcm(Signal::Noise, format, 3000);
    const std::string tree = folder.path("out");
    ASSERT_EQ(run("dvda", {"-o", tree, "-g", folder.write("a.wav", wav(format, audio))}).status, 0);
    Bytes widened;
    for (const std::uint8_t sample : audio) {
        widened = std::move(widened) + Bytes{0, static_cast<std::uint8_t>(sample - 128)};
    }
    EXPECT_TRUE(audioOf(tree + "/AUDIO_TS/ATS_01_1.AOB", 16) == widened);
}

TEST(Dvda, LeavesNothingBehindWhenItFails)
{
    const TemporaryFolder folder;
    const std::string good = folder.write("good.wav", song(50000));
    Bytes cut = song(50000);
    cut.resize(100000);
    const std::string short_ = folder.write("short.wav", cut);
    const std::string flac = folder.path("bad.flac");
    ASSERT_EQ(run("flac", {"-s", "-o", flac, good}).status, 0);
    Bytes damaged = readFile(flac);
    damaged[damaged.size() / 2] ^= 0x10;
    folder.write("bad.flac", damaged);

    const std::string out = folder.path("out");
    const std::vector<std::vector<std::string>> wrong = {
        {"-g", good, short_}, // -f would take it
        {"-f", "-g", good, flac},
        {"-f", "-g", good, folder.path("missing.wav")},
        {"-f", "-g", good, folder.write("rate.wav", wav({32000, 2, 16}, Bytes(400)))},
        {"-f", "-g", folder.write("deep.wav", wav({96000, 6, 24}, Bytes(1800)))},
        {"-f", "-g", folder.write("empty.wav", wav({}, {}))},
        {"-f", "-g", folder.write("text.wav", Bytes(100, 'x'))},
    };
    for (std::vector<std::string> words : wrong) {
        words.insert(words.begin(), {"-o", out});
        const ProcessResult result = run("dvda", words);
        EXPECT_EQ(result.status, 1) << words.back();
        EXPECT_NE(result.errors.find(words.back()), std::string::npos) << result.errors;
        EXPECT_FALSE(fs::exists(out + "/AUDIO_TS")) << words.back();
    }
    EXPECT_EQ(run("dvda", {"-f", "-o", out, "-g", good, short_}).status, 0);
}

TEST(Dvda, CleansUpWhenTheDiskIsFull)
{
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    const ProcessResult result =
        run("sh", {"-c", "trap '' XFSZ; ulimit -f 100; exec \"$KRUV_RESOURCES/dvda\" -o \"$0\" -g \"$1\"",
                   out, folder.write("a.wav", song(100000))});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.errors.find("cannot write"), std::string::npos) << result.errors;
    EXPECT_EQ(namesIn(out), std::vector<std::string>{});
}

TEST(Dvda, ReplacesAnEarlierTreeButNothingElse)
{
    const TemporaryFolder folder;
    const std::string out = folder.path("out");
    const std::string song1 = folder.write("1.wav", song(5000));
    fs::create_directories(out + "/AUDIO_TS");
    folder.write("out/AUDIO_TS/ATS_01_2.AOB", Bytes(2048));
    folder.write("out/AUDIO_TS/.kruv-abcdef", Bytes(1));
    ASSERT_EQ(run("dvda", {"-o", out, "-g", song1}).status, 0);
    EXPECT_EQ(namesIn(out + "/AUDIO_TS"), completeTree);

    folder.write("out/AUDIO_TS/holiday.jpg", Bytes(1));
    const Bytes before = readFile(out + "/AUDIO_TS/ATS_01_1.AOB");
    EXPECT_EQ(run("dvda", {"-o", out, "-g", song1, song1}).status, 1);
    EXPECT_EQ(readFile(out + "/AUDIO_TS/ATS_01_1.AOB"), before);
    EXPECT_TRUE(fs::exists(out + "/AUDIO_TS/holiday.jpg"));
}

TEST(AudioTree, SpreadsTheAudioOverFiles)
{
    const TemporaryFolder folder;
    const Bytes audio = pcm(Signal::Noise, {}, 7 * sectorBytes / 4);
    {
        AudioTree tree(folder.path("out"), false, 3);
        for (std::size_t i = 0; i < audio.size(); i += sectorBytes) {
            tree.write(std::span(audio).subspan(i, sectorBytes));
        }
        const Disc disc{{{lpcmFormat(44100, 16, 2, 0), {{0, 6, 585, 1}}}}, 7};
        tree.complete(disc, {});
        EXPECT_EQ(readFile(folder.path("out/AUDIO_TS/AUDIO_PP.IFO")), simplePlayerInfo(disc, 272 + 5 + 3));
    }
    const std::string files = folder.path("out/AUDIO_TS/ATS_01_");
    EXPECT_EQ(fs::file_size(files + "1.AOB"), 3 * sectorBytes);
    EXPECT_TRUE(readFile(files + "1.AOB") + readFile(files + "2.AOB") + readFile(files + "3.AOB") == audio);
}

TEST(Options, TakeEveryOrderAndRefuseTheRest)
{
    const Options other = parseOptions({"-g", "a", "-n", "-p", "300", "-o", "OUT"});
    EXPECT_EQ(other.files, std::vector<std::string>{"a"});
    EXPECT_FALSE(other.videoFolder);
    EXPECT_FALSE(other.tolerant);
    EXPECT_EQ(other.infoSector, 300U);
    EXPECT_EQ(parseOptions({"-o", "OUT", "-g", "--", "-a.wav"}).files, std::vector<std::string>{"-a.wav"});

    for (const char *line : {"", "-g a", "-o OUT", "-o OUT -g", "-o OUT -g a -g b", "-o OUT -g a -x",
                             "-g a -o", "-o OUT -p 12x -g a", "a -o OUT -g b"}) {
        std::istringstream words(line);
        const std::vector<std::string> arguments(std::istream_iterator<std::string>(words), {});
        EXPECT_THROW(parseOptions(arguments), UsageError) << line;
    }
}

} // namespace kruv::dvda::test
