// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/LittleEndian.h"
#include "common/TestProcess.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdlib>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace kruv::aacplusenc {
namespace {

using namespace tools::test;
using tools::readLe16;
using tools::WavFormat;

/// Struck tones, the same in all channels: their attacks show where the audio lies.
Bytes tones(const WavFormat &format, std::size_t frames)
{
    Bytes bytes;
    for (std::size_t i = 0; i < frames * format.channels; ++i) {
        const std::size_t frame = i / format.channels;
        const double t = static_cast<double>(frame) / format.sampleRate;
        const double value =
            0.4 * std::exp(-std::fmod(t, 0.2) / 0.02) * (std::sin(1900 * t) + std::sin(6900 * t));
        const auto sample = std::lround(value * ((1 << (format.bitsPerSample - 1)) - 1));
        for (unsigned b = 0; b < format.bytesPerSample(); ++b) {
            bytes.push_back(
                static_cast<std::uint8_t>((sample + (format.bitsPerSample == 8 ? 128 : 0)) >> (8 * b)));
        }
    }
    return bytes;
}

/// The first channel of 16-bit audio.
std::vector<double> firstChannel(const Bytes &audio, std::size_t channels)
{
    std::vector<double> samples;
    for (std::size_t i = 0; i + 1 < audio.size(); i += 2 * channels) {
        samples.push_back(static_cast<std::int16_t>(readLe16(&audio[i])));
    }
    return samples;
}

/// By how many frames @p decoded lies behind @p source, as their correlation tells; -40 to 40.
int lag(const std::vector<double> &source, const std::vector<double> &decoded)
{
    int best = 0;
    double largest = 0;
    const auto frames = static_cast<std::ptrdiff_t>(std::min(source.size(), decoded.size()));
    for (int shift = -40; shift <= 40; ++shift) {
        double sum = 0;
        for (std::ptrdiff_t i = 40; i + 40 < frames; ++i) {
            sum += source[static_cast<std::size_t>(i)] * decoded[static_cast<std::size_t>(i + shift)];
        }
        if (sum > largest) {
            largest = sum;
            best = shift;
        }
    }
    return largest > 0 ? best : 1000;
}

/// What ffprobe says about the stream.
std::map<std::string, std::string> probe(const std::string &path)
{
    const ProcessResult result = run("ffprobe", {"-v", "error", "-show_streams", "-show_format", path});
    EXPECT_EQ(result.errors, "");
    std::istringstream lines(std::string(result.output.begin(), result.output.end()));
    std::map<std::string, std::string> fields;
    for (std::string line; std::getline(lines, line);) {
        fields.try_emplace(line.substr(0, line.find('=')), line.substr(line.find('=') + 1));
    }
    return fields;
}

} // namespace

// The length is exact for even ones; FFmpeg, unlike others, does not cut the odd frame at the end off.
TEST(AacPlusEnc, KeepsLengthPlaceAndFormat)
{
    struct Case
    {
        WavFormat format;
        std::size_t frames;
        unsigned kilobits;
        const char *profile;
    };
    const Case cases[] = {{{44100, 2, 16}, 50000, 24, "HE-AACv2"}, {{44100, 2, 16}, 50001, 44, "HE-AACv2"},
                          {{44100, 2, 16}, 50000, 45, "HE-AAC"},   {{48000, 2, 24}, 60000, 60, "HE-AAC"},
                          {{44100, 1, 16}, 50000, 24, "HE-AAC"},   {{96000, 2, 24}, 96000, 60, "HE-AAC"},
                          {{22050, 1, 8}, 30000, 32, "HE-AAC"},    {{44100, 6, 16}, 40000, 160, "HE-AAC"},
                          {{44100, 2, 16}, 1, 48, "HE-AAC"},       {{44100, 2, 16}, 588, 32, "HE-AACv2"},
                          {{44100, 2, 16}, 2048, 48, "HE-AAC"},    {{44100, 2, 16}, 5058, 48, "HE-AAC"}};
    for (const auto &[format, frames, kilobits, profile] : cases) {
        SCOPED_TRACE(std::to_string(format.sampleRate) + " Hz, " + std::to_string(frames) + " frames");
        const TemporaryFolder folder;
        const std::string input = folder.write("in.wav", wav(format, tones(format, frames)));
        const std::string output = folder.path("out.m4a");
        const ProcessResult result = run("aacplusenc", {input, output, std::to_string(kilobits)});
        ASSERT_EQ(result.status, 0) << result.errors;

        auto fields = probe(output);
        EXPECT_EQ(fields["profile"], profile);
        EXPECT_EQ(fields["sample_rate"], std::to_string(format.sampleRate));
        EXPECT_EQ(fields["channels"], std::to_string(format.channels));
        EXPECT_NEAR(std::stod(fields["duration"]), static_cast<double>(frames) / format.sampleRate, 0.0001);

        const Bytes decoded = decodeWithFfmpeg(output, "s16le");
        EXPECT_EQ(decoded.size(), (frames + 1) / 2 * 2 * 2 * format.channels);
        if (frames > 10000) {
            EXPECT_NEAR(std::stod(fields["bit_rate"]), kilobits * 1000.0, kilobits * 100.0);
            const WavFormat in16Bits{format.sampleRate, format.channels, 16};
            const auto source = firstChannel(tones(in16Bits, frames), format.channels);
            EXPECT_LE(std::abs(lag(source, firstChannel(decoded, format.channels))), 2);
        }
    }
}

TEST(AacPlusEnc, TakesAiffAndPipes)
{
    const TemporaryFolder folder;
    const Bytes original = wav({}, tones({}, 30000));
    const std::string input = folder.write("in.wav", original);
    ASSERT_EQ(run("ffmpeg", {"-v", "error", "-i", input, folder.path("in.aiff")}).status, 0);
    ASSERT_EQ(run("aacplusenc", {input, folder.path("wav.m4a"), "48"}).status, 0);
    ASSERT_EQ(run("aacplusenc", {folder.path("in.aiff"), folder.path("aiff.m4a"), "48"}).status, 0);
    EXPECT_EQ(readFile(folder.path("wav.m4a")), readFile(folder.path("aiff.m4a")));

    // Without a known length the end cannot be placed beforehand, but it is written down all the same.
    Bytes unknownLength = original;
    tools::writeLe32(&unknownLength[40], 0xFFFFFFFF);
    ASSERT_EQ(run("sh", {"-c", "cat | \"$KRUV_RESOURCES/aacplusenc\" - \"$0\" 48", folder.path("pipe.m4a")},
                  unknownLength)
                  .status,
              0);
    EXPECT_NEAR(std::stod(probe(folder.path("pipe.m4a"))["duration"]), 30000.0 / 44100, 0.0001);
}

TEST(AacPlusEnc, PrintsRisingPercentages)
{
    const TemporaryFolder folder;
    const ProcessResult result =
        run("aacplusenc", {folder.write("a.wav", song(100000)), folder.path("a.m4a"), "48"});
    std::string expected;
    for (int percent = 0; percent <= 100; ++percent) {
        expected += (percent < 10 ? "[  " : percent < 100 ? "[ " : "[") + std::to_string(percent) + "%]\r";
    }
    EXPECT_EQ(result.errors, expected + "\n");
}

TEST(AacPlusEnc, LeavesNothingBehindWhenItFails)
{
    const TemporaryFolder folder;
    const Bytes good = song(20000);
    Bytes cut = good;
    cut.resize(40000);
    Bytes floating = good;
    floating[20] = 3;
    const std::string goodFile = folder.write("good.wav", good);
    const std::string output = folder.write("out.m4a", {'o', 'l', 'd'});
    const std::string wrong[][3] = {
        {folder.write("cut.wav", cut), output, "48"},
        {folder.write("float.wav", floating), output, "48"},
        {folder.write("empty.wav", wav({}, {})), output, "48"},
        {folder.write("text.wav", Bytes(100, 'x')), output, "48"},
        {folder.write("fast.wav", wav({192000, 2, 16}, Bytes(4000))), output, "48"},
        {folder.write("slow.wav", wav({11025, 2, 16}, Bytes(4000))), output, "24"},
        {folder.write("many.wav", wav({44100, 7, 16}, Bytes(14000))), output, "160"},
        {folder.write("quad.wav", wav({44100, 4, 16}, Bytes(8000))), output, "96"},
        {goodFile, output, "4"},
        {goodFile, output, "1000"},
        {goodFile, output, "48k"},
        {goodFile, folder.path("no folder/out.m4a"), "48"},
        {goodFile, "/dev/full", "48"},
        {goodFile, goodFile, "48"},
        {folder.path("missing.wav"), output, "48"},
    };
    const auto before = folder.names();
    for (const auto &words : wrong) {
        const ProcessResult result = run("aacplusenc", {words[0], words[1], words[2]});
        EXPECT_EQ(result.status, 1) << words[0];
        EXPECT_NE(result.errors.find("aacplusenc: "), std::string::npos) << words[0];
    }
    EXPECT_EQ(run("aacplusenc", {goodFile, output}).status, 2);
    EXPECT_EQ(run("sh", {"-c", "ulimit -f 4; exec \"$KRUV_RESOURCES/aacplusenc\" \"$0\" \"$1\" 48",
                         folder.write("long.wav", song(100000)), output})
                  .status,
              1);
    EXPECT_EQ(readFile(output), (Bytes{'o', 'l', 'd'}));
    EXPECT_EQ(folder.names().size(), before.size() + 1) << "only long.wav is new";
}

TEST(AacPlusEnc, LeavesNothingBehindWhenTerminated)
{
    const TemporaryFolder folder;
    int input[2] = {};
    int progress[2] = {};
    ASSERT_EQ(::pipe(input), 0);
    ASSERT_EQ(::pipe(progress), 0);
    const std::string program = std::string(std::getenv("KRUV_RESOURCES")) + "/aacplusenc";
    const std::string output = folder.path("out.m4a");
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(input[0], STDIN_FILENO);
        ::dup2(progress[1], STDERR_FILENO);
        ::execl(program.c_str(), "aacplusenc", "-", output.c_str(), "48", nullptr);
        ::_exit(127);
    }
    // As soon as it prints, it has begun to write; it cannot end while its input stays open.
    const Bytes start = song(10000);
    ASSERT_EQ(::write(input[1], start.data(), start.size() - 100), static_cast<ssize_t>(start.size() - 100));
    char first = 0;
    ASSERT_EQ(::read(progress[0], &first, 1), 1);
    EXPECT_FALSE(folder.names().empty());
    ::kill(child, SIGTERM);
    int status = 0;
    ::waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM);
    EXPECT_EQ(folder.names(), std::vector<std::string>{});
    for (const int end : {input[0], input[1], progress[0], progress[1]}) {
        ::close(end);
    }
}

} // namespace kruv::aacplusenc
