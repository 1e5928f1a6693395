// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Decoding.h"
#include "ToolFinder.h"
#include "ToolRun.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::adapters {

namespace {

using Names = std::vector<std::string>;

const std::string conv = "shntool conv -P pct -O never -d ";

class ShntoolRunTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!haveTools({"shntool", "flac", "wavpack", "sox"})) {
            GTEST_SKIP() << "needs shntool, flac, wavpack and sox";
        }
        std::filesystem::create_directories(source(""));
        std::filesystem::create_directories(output(""));
    }

    std::string source(const std::string &name) const { return m_folder.path("in put/" + name); }
    std::string output(const std::string &name) const { return m_folder.path("out/" + name); }

    // The audio as a file called `name`, in the format of its extension whatever its case.
    std::string makeSource(const std::string &name, const TestAudio &audio) const
    {
        auto path = source(name);
        const auto wav = m_folder.path("source.wav");
        writeWav(wav, audio);
        auto extension = name.substr(name.rfind('.') + 1);
        std::transform(extension.begin(), extension.end(), extension.begin(),
                       [](unsigned char c) { return tolower(c); });
        const auto target = m_folder.path("source." + extension);
        if (extension == "flac") {
            runTool("flac -s -f -0", {wav, "-o", target});
        } else if (extension == "wv") {
            // Made from an AIFF: the awkward kind.
            runTool("sox -D", {wav, m_folder.path("source.aiff")});
            runTool("wavpack -q -y -f", {m_folder.path("source.aiff"), "-o", target});
        } else if (extension != "wav") {
            runTool("sox -D", {wav, target});
        }
        std::filesystem::rename(target, path);
        return path;
    }

    Names leftOver() const { return namesIn(output("")); }

    const TestAudio m_cd = TestAudio::noise(44100, 2, 16);
    const tools::test::TemporaryFolder m_folder;
};

} // namespace

TEST_F(ShntoolRunTest, ConvertsEveryDepthAndChannelCountFromEveryContainer)
{
    const TestAudio audios[]{m_cd, TestAudio::noise(20011, 2, 24), TestAudio::noise(9001, 6, 16),
                             TestAudio::noise(7001, 6, 24)};
    const std::pair<std::string, std::string> encoders[]{
        {"cust ext=flac flac -1  -V  -o %f -", "flac"}, {"wav", "wav"}, {"aiff", "aiff"}};
    for (const auto &audio : audios) {
        for (const char *name : {"X.WAV", "x.aif", "U.FLAC", "y.wv"}) {
            const auto path = makeSource(name, audio);
            for (const auto &[encoder, extension] : encoders) {
                SCOPED_TRACE(std::string(name) + " to " + extension + ", " + std::to_string(audio.bits) +
                             " bits");
                const auto result = runTool(conv + output("") + " -o", {encoder, path});
                const auto wanted = std::string(name).substr(0, 1) + "." + extension;
                EXPECT_EQ(result.status, 0) << result.output;
                EXPECT_EQ(leftOver(), Names{wanted});
                EXPECT_TRUE(pcmOf(output(wanted), audio.bits) == audio.samples);
                EXPECT_NE(result.output.find("/out/" + wanted + "]"), std::string::npos) << result.output;
                std::filesystem::remove(output(wanted));
            }
        }
    }
}

TEST_F(ShntoolRunTest, AnAiffThatCannotBeWrittenWholeIsAFailure)
{
    const auto wav = makeSource("a.wav", m_cd);
    const auto cut = makeSource("cut.wav", m_cd);
    std::filesystem::resize_file(cut, std::filesystem::file_size(cut) - 1);
    const auto program = std::string(getenv("KRUV_RESOURCES")) + "/kruv-adapters";
    const auto store = [&](const std::string &input, const std::string &target) {
        return runTool("/bin/sh -c", {R"("$0" store-aiff "$2" < "$1")", program, input, target}).status;
    };
    EXPECT_EQ(store(wav, output("a.aiff")), 0);
    EXPECT_NE(store(wav, "/dev/full"), 0);
    EXPECT_NE(store(cut, output("cut.aiff")), 0);
}

TEST_F(ShntoolRunTest, ReportsAndHashesAgreeOverContainers)
{
    const auto audio = TestAudio::noise(11025, 6, 24);
    Arguments files;
    for (const char *name : {"a.wav", "b.aif", "c.flac", "d.wv"}) {
        makeSource(name, audio);
        files.emplace_back(name);
    }
    Arguments line{"hash", "-m"};
    line.insert(line.end(), files.begin(), files.end());
    const auto hashes = runTool("shntool", line, source(""));
    EXPECT_EQ(hashes.status, 0);
    std::string hash;
    for (const auto &name : files) {
        const auto at = hashes.output.find("  [shntool]  " + name + "\n");
        ASSERT_NE(at, std::string::npos) << hashes.output;
        hash = hash.empty() ? hashes.output.substr(at - 32, 32) : hash;
        EXPECT_EQ(hashes.output.substr(at - 32, 32), hash) << name;
    }
    line = {"len"};
    for (const auto &name : files) {
        line.push_back(source(name));
    }
    const auto lengths = runTool("shntool", line);
    EXPECT_EQ(lengths.status, 0) << lengths.output;
    for (const auto &name : files) {
        EXPECT_NE(lengths.output.find("  " + source(name) + "\n"), std::string::npos) << lengths.output;
    }
    EXPECT_NE(lengths.output.find("  wav  1.0000  " + source("a.wav")), std::string::npos) << lengths.output;
    EXPECT_EQ(runTool("shntool cmp", {source("a.wav"), source("d.wv")}).status, 0);
}

TEST_F(ShntoolRunTest, WritesExactlyTheFileAskedFor)
{
    const auto path = makeSource("T.FLAC", m_cd);
    writeFile(output("T.wav"), "the user's own");
    writeFile(output("Kruv-1.wav"), "");
    auto result = runTool("shntool conv -P pct -O always -o wav -n", {output("Kruv-1.wav"), path});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_TRUE(pcmOf(output("Kruv-1.wav")) == m_cd.samples);
    EXPECT_EQ(contentOf(output("T.wav")), "the user's own");
    EXPECT_EQ(leftOver(), (Names{"Kruv-1.wav", "T.wav"}));

    writeFile(output("T.mp3"), "kept");
    if (haveTools({"lame"})) {
        const Arguments line{"cust ext=mp3 lame -m s -q 9 -b 64 - %f", "-n", output("T.mp3"), path};
        const auto call = conv + output("") + " -o";
        EXPECT_EQ(runTool(call, line).status, 1);
        EXPECT_EQ(contentOf(output("T.mp3")), "kept");
        std::filesystem::remove(output("T.mp3"));
        EXPECT_EQ(runTool(call, line).status, 0);
        EXPECT_GT(contentOf(output("T.mp3")).size(), 4000U);
    }
}

TEST_F(ShntoolRunTest, FixesInTheGivenOrderUnderTheSourcesNames)
{
    // 10 frames too many in each: what is moved from track to track shows the order.
    const Names order{"s10.WAV", "s2.aif", "s1.wv"};
    std::string all;
    Arguments files;
    for (unsigned i = 0; i < order.size(); ++i) {
        const auto audio = TestAudio::noise(588 * 20 + 10, 2, 16, i + 1);
        files.push_back(makeSource(order[i], audio));
        all += audio.samples;
    }
    const auto fix =
        "shntool fix -P pct -O never -k -d " + output("") + " -o cust ext=flac { flac -s -5 -o %f - }";
    auto result = runTool(fix, files, source(""));
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_EQ(leftOver(), (Names{"s1.flac", "s10.flac", "s2.flac"}));
    const auto fixed = pcmOf(output("s10.flac")) + pcmOf(output("s2.flac")) + pcmOf(output("s1.flac"));
    EXPECT_EQ(pcmOf(output("s10.flac")).size() % 2352, 0U);
    EXPECT_TRUE(fixed.substr(0, all.size()) == all);

    // Again over the same names: refused, and nothing of it is left.
    std::filesystem::remove(output("s10.flac"));
    result = runTool(fix, files, source(""));
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("could not open output file: ["), std::string::npos) << result.output;
    EXPECT_EQ(leftOver(), (Names{"s1.flac", "s2.flac"}));
}

TEST_F(ShntoolRunTest, JoinsAndSplitsBackWithoutAQuestion)
{
    const auto first = TestAudio::noise(std::size_t(588) * 10, 2, 16, 1);
    const auto second = TestAudio::noise(std::size_t(588) * 10, 2, 16, 2);
    const auto a = makeSource("10.wav", first);
    const auto b = makeSource("9.wav", second);
    auto result = runTool("shntool join -o flac -n -d", {output(""), "-O", "never", a, b});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_TRUE(pcmOf(output("joined.flac")) == first.samples + second.samples);

    writeFile(source("points.txt"), "0:00.10\n");
    const auto split = "shntool split -o wav -d " + output("") + " -f";
    result = runTool(split, {source("points.txt"), output("joined.flac")});
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_TRUE(pcmOf(output("split-track01.wav")) == first.samples);
    EXPECT_TRUE(pcmOf(output("split-track02.wav")) == second.samples);

    writeFile(output("split-track01.wav"), "renamed by hand");
    result = runTool(split, {source("points.txt"), output("joined.flac")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(contentOf(output("split-track01.wav")), "renamed by hand");
    EXPECT_TRUE(pcmOf(output("split-track02.wav")) == second.samples);
    EXPECT_EQ(leftOver(), (Names{"joined.flac", "split-track01.wav", "split-track02.wav"}));
}

TEST_F(ShntoolRunTest, SplitsHighResolutionAudioAtTheRightPlace)
{
    constexpr std::size_t secondBytes = std::size_t(44100) * 6;
    const auto audio = TestAudio::noise(std::size_t(44100) * 2, 2, 24);
    writeFile(source("points.cue"), "FILE \"x\" WAVE\n TRACK 01 AUDIO\n  INDEX 01 00:00:00\n"
                                    " TRACK 02 AUDIO\n  INDEX 01 00:01:00\n");
    for (const char *name : {"a.wav", "b.aif", "c.flac", "d.wv"}) {
        SCOPED_TRACE(name);
        const auto path = makeSource(name, audio);
        const auto result =
            runTool("shntool split -f", {source("points.cue"), "-o", "flac", "-d", output(""), path});
        EXPECT_EQ(result.status, 0) << result.output;
        EXPECT_TRUE(pcmOf(output("split-track01.flac"), 24) == audio.samples.substr(0, secondBytes));
        EXPECT_TRUE(pcmOf(output("split-track02.flac"), 24) == audio.samples.substr(secondBytes));
        EXPECT_EQ(leftOver(), (Names{"split-track01.flac", "split-track02.flac"}));
        std::filesystem::remove(output("split-track01.flac"));
        std::filesystem::remove(output("split-track02.flac"));
    }
}

TEST_F(ShntoolRunTest, OurOwnCodersServeIt)
{
    if (!haveTools({"shorten", "ttaenc"})) {
        GTEST_SKIP() << "needs shorten and ttaenc in the resources folder";
    }
    const auto wav = makeSource("a.wav", m_cd);
    const auto shn = output("a.shn");
    EXPECT_EQ(runTool("shntool conv -o shn -P pct -O never -d", {output(""), wav}).status, 0);
    EXPECT_EQ(runTool("shntool conv -P pct -O always -o wav -n", {output("Kruv-2.wav"), shn}).status, 0);
    EXPECT_EQ(contentOf(output("Kruv-2.wav")), contentOf(wav)) << "the header comes back too";

    const auto deep = makeSource("deep.wav", TestAudio::noise(9000, 6, 24));
    const auto tta = output("deep.tta");
    ASSERT_EQ(runTool("ttaenc", {deep, "-o", tta}).status, 0);
    EXPECT_EQ(runTool("shntool cmp", {deep, tta}).status, 0);
    EXPECT_EQ(runTool("shntool cmp", {wav, shn}).status, 0);
    EXPECT_NE(runTool("shntool conv -o shn -O never -d", {output(""), deep}).status, 0);
    EXPECT_EQ(leftOver(), (Names{"Kruv-2.wav", "a.shn", "deep.tta"}));
}

TEST_F(ShntoolRunTest, NamesComeBackAsTheyWere)
{
    makeSource("x.aif", TestAudio::noise(44100, 2, 16, 2)); // what "[x].aif" would stand for
    for (const std::string name : {"new\nline.wav", "50% off.WAV", "a: b.flac", "q'u\"o.aif", "%f.wv",
                                   "l\xe9t.wav", "-lead.flac", "[x].aif", "{y}?.aif", "|cmd.aif"}) {
        SCOPED_TRACE(name);
        const auto path = makeSource(name, m_cd);
        const auto wanted = name.substr(0, name.rfind('.')) + ".flac";
        auto result = runTool(conv + output("") + " -o flac", {path});
        EXPECT_EQ(result.status, 0) << result.output;
        EXPECT_EQ(leftOver(), Names{wanted});
        EXPECT_TRUE(pcmOf(output(wanted)) == m_cd.samples);
        std::filesystem::remove(output(wanted));

        result = runTool("shntool hash -m", {name}, source(""));
        EXPECT_EQ(result.status, 0) << result.output;
        EXPECT_TRUE(result.output.ends_with("  [shntool]  " + name + "\n")) << result.output;
    }
}

TEST_F(ShntoolRunTest, FailuresLeaveNothingAndDoneWorkStays)
{
    const auto good = makeSource("good.wav", TestAudio::noise(588 * 5 + 1, 2, 16));
    const auto odd = makeSource("odd.wav", TestAudio::noise(std::size_t(588) * 5, 2, 24));
    auto result = runTool("shntool pad -d", {output(""), "-o", "wav", "-O", "never", odd, good});
    EXPECT_EQ(result.status, 1) << "one file was passed over";
    EXPECT_EQ(leftOver(), Names{"good-padded.wav"});
    std::filesystem::remove(output("good-padded.wav"));

    // A FLAC cut in the middle
    const auto flac = makeSource("cut.flac", m_cd);
    std::filesystem::resize_file(flac, std::filesystem::file_size(flac) / 2);
    result = runTool(conv + output("") + " -o wav", {flac});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.output.find("ERROR"), std::string::npos) << result.output;
    EXPECT_EQ(leftOver(), Names{});

    EXPECT_NE(runTool("shntool conv -o wav -O never -d", {output("none"), good}).status, 0);
    EXPECT_EQ(leftOver(), Names{});
}

TEST_F(ShntoolRunTest, AMissingDecoderIsNamed)
{
    const tools::test::TemporaryFolder nothing;
    for (const auto &[start, decoder] : {std::pair{"ajkg", "shorten"}, {"wvpk", "wvunpack"}}) {
        writeFile(source("a.x"), start);
        EXPECT_EQ(missingDecoder({source("none"), source("a.x")}, {nothing.path(""), nothing.path("")}),
                  decoder);
    }
    EXPECT_EQ(missingDecoder({makeSource("a.wav", m_cd)}, {nothing.path(""), nothing.path("")}), "");
}

TEST_F(ShntoolRunTest, ASignalEndsTheWholeRunAndCleansUp)
{
    // Large enough to be far from done when its first progress is seen.
    const auto path = makeSource("long.WAV", TestAudio::noise(std::size_t(44100) * 60, 2, 16));
    const auto program = std::string(getenv("KRUV_RESOURCES")) + "/shntool";
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        int ends[2] = {};
        ASSERT_EQ(::pipe(ends), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            ::dup2(ends[1], STDOUT_FILENO);
            ::dup2(ends[1], STDERR_FILENO);
            ::execl(program.c_str(), "shntool", "conv", "-P", "pct", "-O", "never", "-d", output("").c_str(),
                    "-o", "cust ext=flac flac -8 -o %f -", path.c_str(), nullptr);
            ::_exit(127);
        }
        ::close(ends[1]);
        std::string printed;
        bool sent = false;
        for (char next = 0; ::read(ends[0], &next, 1) == 1;) {
            printed += next;
            sent = sent || (printed.ends_with("1%") && ::kill(child, signal) == 0);
        }
        ::close(ends[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_TRUE(sent && WIFSIGNALED(status) && WTERMSIG(status) == signal) << printed;
        EXPECT_EQ(printed.find("OK"), std::string::npos);
        EXPECT_EQ(leftOver(), Names{});
    }
}

TEST_F(ShntoolRunTest, WhatDoesNotListenIsKilledAndNothingIsLeft)
{
    // Neither the tool nor what it starts ends when asked.
    const auto bin = m_folder.path("bin");
    std::filesystem::create_directories(bin);
    writeFile(bin + "/shntool",
              "#!/bin/sh\ntrap '' TERM\n(trap '' TERM; sleep 60) &\necho ready\nsleep 60\n");
    std::filesystem::permissions(bin + "/shntool", std::filesystem::perms::owner_all);
    const auto path = makeSource("a.WAV", m_cd);
    const auto program = std::string(getenv("KRUV_RESOURCES")) + "/shntool";
    const auto search = "PATH=" + bin + ":/usr/bin:/bin";
    int ends[2] = {};
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t adapter = ::fork();
    if (adapter == 0) {
        ::setsid();
        ::dup2(ends[1], STDOUT_FILENO);
        ::close(ends[0]);
        ::close(ends[1]);
        ::execle("/usr/bin/env", "env", search.c_str(), program.c_str(), "conv", "-d", output("").c_str(),
                 "-o", "wav", path.c_str(), nullptr, environ);
        ::_exit(127);
    }
    ::close(ends[1]);
    char first = 0;
    ASSERT_EQ(::read(ends[0], &first, 1), 1);
    ::kill(adapter, SIGTERM);
    int status = 0;
    ::waitpid(adapter, &status, 0);
    ::close(ends[0]);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
    EXPECT_EQ(processesThatStay(adapter), std::vector<pid_t>());
    EXPECT_EQ(leftOver(), Names{});
}

TEST_F(ShntoolRunTest, LookingAtADecodersStartLeavesNoPump)
{
    // A header without an end, then more than all pipes hold: the pump is in the middle of writing when it is
    // left alone.
    const auto bin = m_folder.path("bin");
    std::filesystem::create_directories(bin);
    writeFile(m_folder.path("stream"),
              "RIFF\xff\xff\xff\x7fWAVEJUNK\xff\xff\xff\x7f" + std::string(4 << 20, 'x'));
    writeFile(bin + "/wvunpack", "#!/bin/sh\nexec cat '" + m_folder.path("stream") + "'\n");
    std::filesystem::permissions(bin + "/wvunpack", std::filesystem::perms::owner_all);
    writeFile(source("a.wv"), "wvpk");
    const pid_t session = ::fork();
    if (session == 0) {
        ::setsid();
        decodedStart(source("a.wv"), ToolFinder(bin + ":/usr/bin:/bin", bin));
        ::_exit(0);
    }
    ::waitpid(session, nullptr, 0);
    EXPECT_EQ(processesThatStay(session), std::vector<pid_t>());
}

} // namespace kruv::adapters
