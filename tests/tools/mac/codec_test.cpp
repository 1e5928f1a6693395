// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MacTestSupport.h"

#include <gtest/gtest.h>
#include <string>

namespace kruv::mac::test {

namespace {

constexpr unsigned levels[] = {1000, 2000, 3000, 4000, 5000};

/// ffmpeg 5.1 sums up in 64 bits there, so it loses what overflows 32 bits.
bool ffmpegLosesLoudAudio(Format format, unsigned level)
{
    return format.bits == 24 && format.channels == 2 && level == 5000;
}

class Codec : public testing::TestWithParam<Format>
{
};

void expectExact(const Bytes &audio, Format format, unsigned level, const std::string &what,
                 bool judged = true)
{
    SCOPED_TRACE(what + " at " + std::to_string(level));
    const TemporaryFolder folder;
    const Bytes wav = wavFile(format, audio);
    const std::string ape = compressed(folder, wav, level);
    EXPECT_TRUE(decompressed(readFile(ape)) == wav);
    if (judged) {
        EXPECT_TRUE(decodedByFfmpeg(ape, format) == audio);
    }
}

} // namespace

TEST_P(Codec, EverySignalSurvivesEveryLevel)
{
    const Format format = GetParam();
    const Bytes mixture =
        everySignal(format.wav(), 2500) + makeOneSilent(format, 3000) + makeExtremes(format, 3000);
    for (const unsigned level : levels) {
        const bool judged = !ffmpegLosesLoudAudio(format, level);
        expectExact(mixture, format, level, "mixture", judged);
        expectExact(makeAudio(Signal::Music, format, 20000), format, level, "music", judged);
        expectExact(makeOneSilent(format, 3000), format, level, "one silent channel", judged);
        expectExact(makeAudio(Signal::Silence, format, 3000), format, level, "silence");
        expectExact(makeAudio(Signal::SameChannels, format, 3000), format, level, "equal channels");
    }
}

TEST(CodecWideSamples, QuietAudioAtTheHighestLevel)
{
    // 24 bits at a fiftieth of full scale stay clear of overflows, so ffmpeg can judge.
    constexpr Format format{24, 2};
    Bytes audio;
    const Bytes loud = makeAudio(Signal::Music, {16, 2}, 30000);
    for (std::size_t at = 0; at < loud.size(); at += 2) {
        const auto sample = static_cast<int16_t>(loud[at] | loud[at + 1] << 8) * 5;
        for (int shift = 0; shift < 24; shift += 8) {
            audio.push_back(static_cast<uint8_t>(sample >> shift));
        }
    }
    expectExact(audio, format, 5000, "quiet music");
}

INSTANTIATE_TEST_SUITE_P(Formats, Codec,
                         testing::Values(Format{8, 1}, Format{8, 2}, Format{16, 1}, Format{16, 2},
                                         Format{24, 1}, Format{24, 2}),
                         [](const auto &info) {
                             return std::to_string(info.param.bits) + "bits" +
                                    std::to_string(info.param.channels) + "channels";
                         });

TEST(CodecLengths, FrameEdgesAndShortest)
{
    constexpr Format format{16, 2};
    for (const unsigned blocks : {1U, 2U, 15U, 16U, 17U, 511U, 512U, 513U, 73727U, 73728U, 73729U, 147456U}) {
        expectExact(makeAudio(Signal::Music, format, blocks), format, blocks < 1000 ? 5000 : 2000,
                    std::to_string(blocks) + " blocks");
    }
    for (const unsigned blocks : {294911U, 294912U, 294913U}) {
        expectExact(makeAudio(Signal::Music, {8, 1}, blocks), {8, 1}, 4000,
                    std::to_string(blocks) + " blocks");
    }
    expectExact(makeAudio(Signal::Music, {8, 1}, 1179649), {8, 1}, 5000, "two longest frames");
}

TEST(CodecSizes, MusicIsSmallerThanFlacAndSmallerAtEachLevel)
{
    // Chords in a room, with the hiss of a recording.
    const TemporaryFolder folder;
    const std::string wav = folder.path("music.wav");
    const std::string chords = shellWord(folder.path("chords.wav"));
    const std::string hiss = shellWord(folder.path("hiss.wav"));
    const std::string made = "sox -R -n -r 44100 -b 16 -c 2 ";
    const Outcome outcome = runShell(
        made + chords +
        " synth 8 pluck C3 pluck E4 pluck G4 pluck C5 remix 1,3,4v0.4 2,4,3v0.4 reverb 60 gain -n -3 && " +
        made + hiss + " synth 8 pinknoise pinknoise vol 0.004 && sox -R -m -v 0.9 " + chords + " -v 1 " +
        hiss + " -b 16 " + shellWord(wav));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    ASSERT_EQ(runShell("flac -8 -s " + shellWord(wav)).status, 0);
    const std::size_t flacSize = readFile(folder.path("music.flac")).size();
    std::size_t previous = SIZE_MAX;
    for (const unsigned level : levels) {
        const std::size_t size = readFile(compressed(folder, readFile(wav), level)).size();
        EXPECT_LE(size, previous) << level;
        previous = size;
        if (level >= 2000) {
            EXPECT_LT(size, flacSize) << level;
        }
    }
}

} // namespace kruv::mac::test
