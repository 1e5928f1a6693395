// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MacTestSupport.h"
#include "mac/CommandLine.h"
#include "mac/TimedProgress.h"

#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace kruv::mac::test {

namespace {

constexpr Format stereo{16, 2};

/// A folder with a WAV file and its compressed form.
class Program : public testing::Test
{
protected:
    Program()
    {
        folder.write("-a 'source' 100%.wav", image);
        EXPECT_EQ(run("IN.wav OUT.ape -c1000").status, 0);
    }

    /// Runs the program; the upper-case names stand for files of the folder.
    Outcome run(const std::string &arguments) { return runShell(command(arguments)); }
    std::string command(std::string arguments)
    {
        const std::pair<const char *, std::string> files[] = {
            {"IN.wav", wav}, {"OUT.ape", ape}, {"BACK.wav", folder.path("back.wav")}};
        for (const auto &[name, path] : files) {
            const auto at = arguments.find(name);
            if (at != std::string::npos) {
                arguments.replace(at, std::string(name).size(), shellWord(path));
            }
        }
        return macProgram() + " " + arguments;
    }
    void damage()
    {
        Bytes bytes = readFile(ape);
        bytes[bytes.size() / 2] ^= 4;
        folder.write("Error: 10.ape", bytes);
    }

    TemporaryFolder folder;
    std::string wav = folder.path("-a 'source' 100%.wav");
    std::string ape = folder.path("Error: 10.ape");
    Bytes image = wavFile(stereo, makeAudio(Signal::Music, stereo, 160000));
};

} // namespace

TEST_F(Program, SpeaksInTheShapesItsCallersRead)
{
    const Outcome outcome = run("OUT.ape BACK.wav -D");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(readFile(folder.path("back.wav")) == image);
    const std::regex piece(
        "Progress: [0-9]+\\.[0-9]% \\([0-9]+\\.[0-9] seconds remaining, [0-9]+\\.[0-9] seconds total\\) +\r");
    std::vector<double> shares;
    for (auto at = outcome.err.find("Progress: "); at != std::string::npos;
         at = outcome.err.find("Progress: ", at + 1)) {
        const std::string text = outcome.err.substr(at, outcome.err.find('\r', at) + 1 - at);
        EXPECT_TRUE(std::regex_match(text, piece)) << text;
        shares.push_back(std::stod(text.substr(10)));
    }
    ASSERT_GE(shares.size(), 3U);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_EQ(shares.back(), 100.0);
    EXPECT_EQ(outcome.err.find("Error"), std::string::npos);
    // Callers look for the first digit of what has arrived, which must be the percentage's.
    EXPECT_EQ(outcome.err.find_first_of("0123456789"), outcome.err.find("Progress: ") + 10);
    EXPECT_EQ(TimedProgress::piece(0.125, 0.5),
              "Progress: 12.5% (3.5 seconds remaining, 4.0 seconds total)          \r");
}

TEST_F(Program, VerifiesWithTheModeInEitherPlace)
{
    for (const char *arguments : {"-v OUT.ape", "OUT.ape -V"}) {
        const Outcome good = run(arguments);
        EXPECT_EQ(good.status, 0);
        EXPECT_NE(good.err.find("Progress: 100.0%"), std::string::npos);
    }
    damage();
    const Outcome bad = run("-v OUT.ape");
    EXPECT_NE(bad.status, 0);
    EXPECT_TRUE(bad.err.find("\nError: 1009\n") != std::string::npos ||
                bad.err.find("\nError: 1010\n") != std::string::npos)
        << bad.err;
    EXPECT_EQ(bad.err.find("100.0%"), std::string::npos);
}

TEST_F(Program, UsesStandardInputAndOutput)
{
    EXPECT_EQ(runShell("cat " + shellWord(wav) + " | " + command("- BACK.wav -c3000")).status, 0);
    EXPECT_TRUE(decompressed(readFile(folder.path("back.wav"))) == image);
    const Outcome outcome = runShell("cat " + shellWord(ape) + " | " + command("- - -d"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(Bytes(outcome.out.begin(), outcome.out.end()) == image);
}

TEST_F(Program, KeepsItsMessagesOutOfTheAudio)
{
    // The output file would get the number of a closed stream.
    EXPECT_EQ(run("OUT.ape BACK.wav -d >&- 2>&-").status, 0);
    EXPECT_TRUE(readFile(folder.path("back.wav")) == image);
    EXPECT_NE(run("OUT.ape - -d >&-").status, 0);
}

TEST_F(Program, LeavesNothingHalfDoneBehind)
{
    const std::vector<std::string> before = folder.names();
    for (const char *arguments : {"IN.wav ./in.wav -c1000", "OUT.ape ./out.ape -d"}) {
        const Outcome same = runShell("cd " + shellWord(folder.path("")) + "; ln " + shellWord(wav) +
                                      " in.wav; ln " + shellWord(ape) + " out.ape; " + command(arguments) +
                                      "; status=$?; rm in.wav out.ape; exit $status");
        EXPECT_NE(same.err.find("Error: 1003"), std::string::npos) << same.err;
        EXPECT_NE(same.status, 0);
    }
    // A full disk, as a limit on the size of files: the program sees a failing write.
    const Outcome full = runShell("ulimit -f 50; " + command("OUT.ape BACK.wav -d"));
    EXPECT_NE(full.err.find("Error: 1001"), std::string::npos) << full.err;
    EXPECT_NE(full.status, 0);
    const Outcome fullWhilePacking = runShell("ulimit -f 20; " + command("IN.wav BACK.wav -c2000"));
    EXPECT_NE(fullWhilePacking.err.find("Error: 1001"), std::string::npos) << fullWhilePacking.err;
    EXPECT_NE(run("OUT.ape - -d >/dev/full").status, 0);
    // The reader has gone before the first byte.
    const Outcome broken = runShell("{ " + command("OUT.ape - -d") + "; echo status $? >&2; } | true");
    EXPECT_NE(broken.err.find("Error: 1001"), std::string::npos) << broken.err;
    EXPECT_EQ(broken.err.find("status 0"), std::string::npos);

    damage();
    EXPECT_NE(run("OUT.ape BACK.wav -d").status, 0);
    EXPECT_EQ(folder.names(), before);
    folder.write("back.wav", bytesOf("kept"));
    EXPECT_NE(run("OUT.ape BACK.wav -d").status, 0);
    EXPECT_EQ(readFile(folder.path("back.wav")), bytesOf("kept"));
}

TEST_F(Program, RemovesItsFileWhenTerminated)
{
    const std::vector<std::string> before = folder.names();
    // The input never ends, so the program is at work when the signal comes. It comes when the temporary file
    // has got its final rights, for then it is among those to remove.
    const Outcome outcome = runShell(
        "umask 022; cd " + shellWord(folder.path("")) + "; mkfifo pipe; exec 3<>pipe; head -c 100044 " +
        shellWord(wav) + " >&3 & writer=$!; exec 4<>pipe; " + macProgram() +
        " pipe out.ape -c5000 & tool=$!; until find . -name '.kruv-*' -perm -040 | grep -q .; do "
        "kill -0 $tool || break; done; kill -TERM $tool; wait $tool; echo $?; kill $writer; rm pipe");
    EXPECT_EQ(outcome.out, "143\n") << outcome.err;
    EXPECT_EQ(folder.names(), before);
}

TEST_F(Program, StaysWithinItsMemory)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers need more address space than any limit allows";
#endif
    // The longest frames there are, of the widest samples.
    constexpr Format format{24, 2};
    image = wavFile(format, makeAudio(Signal::Noise, format, 1179650));
    folder.write("-a 'source' 100%.wav", image);
    EXPECT_EQ(runShell("ulimit -v 262144; " + command("IN.wav OUT.ape -c5000")).status, 0);
    EXPECT_EQ(runShell("ulimit -v 262144; " + command("OUT.ape BACK.wav -d")).status, 0);
    EXPECT_TRUE(readFile(folder.path("back.wav")) == image);
}

TEST_F(Program, WorksThroughShntool)
{
    const std::string path = "PATH=\"$KRUV_RESOURCES:$PATH\" ";
    const std::string names = shellWord(wav) + " " + shellWord(folder.path("made/-a 'source' 100%.ape"));
    ASSERT_EQ(runShell("mkdir " + shellWord(folder.path("made"))).status, 0);
    const Outcome made =
        runShell(path + "shntool conv -o ape -d " + shellWord(folder.path("made")) + " " + shellWord(wav));
    EXPECT_EQ(made.status, 0) << made.err;
    const Outcome same = runShell(path + "shntool cmp " + names);
    EXPECT_EQ(same.status, 0) << same.err;
    const Outcome hashes = runShell(path + "shntool hash " + names + " | cut -c1-32 | uniq | wc -l");
    EXPECT_EQ(std::stoi(hashes.out), 1) << hashes.err;
    const Outcome back =
        runShell("cd " + shellWord(folder.path("made")) + " && " + path + "shntool conv -o wav ./*.ape");
    EXPECT_EQ(back.status, 0) << back.err;
    EXPECT_TRUE(readFile(folder.path("made/-a 'source' 100%.wav")) == image);
}

TEST(CommandLine, TellsFilesFromModesByTheirPlace)
{
    using Words = std::vector<std::string>;
    const auto parse = [](const Words &words) { return CommandLine::parse(words); };
    const auto odd = parse({"-d", "-v", "-C4000"});
    ASSERT_TRUE(odd);
    EXPECT_EQ(odd->mode, CommandLine::Mode::Compress);
    EXPECT_EQ(odd->input, "-d");
    EXPECT_EQ(odd->output, "-v");
    EXPECT_EQ(odd->level->number, 4000);
    EXPECT_EQ(parse({"-v", "-v"})->input, "-v");
    for (const Words &wrong :
         {Words{}, Words{"a"}, Words{"a", "b"}, Words{"a", "b", "-c"}, Words{"a", "b", "-c2500"},
          Words{"a", "b", "-c2000x"}, Words{"a", "b", "-dd"}, Words{"a", "b", "-d", "c"}})
        EXPECT_FALSE(parse(wrong)) << wrong.size();
    EXPECT_NE(runShell(macProgram()).status, 0);
}

} // namespace kruv::mac::test
