// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "dvda/PackWriter.h"

#include "AobReader.h"
#include "common/MemorySink.h"
#include "common/TestSignals.h"

#include <gtest/gtest.h>

namespace kruv::dvda::test {
namespace {

using tools::test::Bytes;

struct Written
{
    std::vector<Track> tracks;
    Bytes bytes;
    std::vector<ReadPack> packs;
};

/// One title of tracks of random frames; every track's are handed over in pieces of odd sizes.
Written write(const LpcmFormat &format, const std::vector<std::size_t> &trackFrames, Bytes &source)
{
    tools::MemorySink sink;
    PackWriter writer(format, 100, sink);
    Written result;
    for (const std::size_t frames : trackFrames) {
        const Bytes audio = tools::test::pcm(tools::test::Signal::Noise,
                                             {format.sampleRate, static_cast<std::uint16_t>(format.channels),
                                              static_cast<std::uint16_t>(format.bitsPerSample)},
                                             frames);
        std::size_t piece = 1;
        for (std::size_t done = 0; done < frames; done += piece, piece = piece * 3 % 1009) {
            piece = std::min(piece, frames - done);
            writer.write(
                std::span(audio).subspan(done * format.bytesPerFrame(), piece * format.bytesPerFrame()));
        }
        result.tracks.push_back(writer.endTrack());
        source.insert(source.end(), audio.begin(), audio.end());
        source.resize(source.size() + frames % 2 * format.bytesPerFrame());
    }
    result.bytes = sink.take();
    for (std::size_t i = 0; i < result.bytes.size(); i += sectorBytes) {
        result.packs.push_back(readPack(std::span(result.bytes).subspan(i, sectorBytes)));
    }
    return result;
}

// The head and the clocks of a disc that commercial authoring software made, as published.
TEST(PackWriter, WritesTheKnownStartOfAnAob)
{
    Bytes source;
    const Written written = write(lpcmFormat(44100, 16, 2, 0), {6000}, source);
    EXPECT_EQ(Bytes(written.bytes.begin(), written.bytes.begin() + 64),
              tools::test::fromHex("000001BA4400040004010189C3F8000001BB000C80C4E104A07FB8C040BDE00A"
                                   "000001BD07DA81810821000104931E600AA000000B000A100F8F000180000000"));
    const std::uint64_t arrivals[] = {0, 43885, 87771, 131657, 479173, 785295, 1091418, 1397540, 1703663};
    const std::uint64_t times[] = {585, 1646, 2625, 3687, 4666, 5727, 6707, 7768};
    for (std::size_t i = 0; i < std::size(arrivals); ++i) {
        EXPECT_EQ(written.packs[i].arrival, arrivals[i]) << i;
    }
    for (std::size_t i = 0; i < std::size(times); ++i) {
        EXPECT_EQ(written.packs[i].time, times[i]) << i;
    }
}

// Every sample, every clock and every pointer, over track borders and tracks of unusual lengths.
TEST(PackWriter, KeepsAudioAndClocks)
{
    const LpcmFormat formats[] = {
        lpcmFormat(44100, 16, 2, 0), lpcmFormat(192000, 24, 2, 0), lpcmFormat(96000, 24, 4, 0),
        lpcmFormat(48000, 24, 6, 0), lpcmFormat(88200, 16, 5, 0),  lpcmFormat(48000, 24, 1, 0),
        lpcmFormat(48000, 16, 3, 0),
    };
    for (const LpcmFormat &format : formats) {
        SCOPED_TRACE(format.description());
        const std::vector<std::size_t> lengths = {9000, 1, 20, 495, 536, 537, 7777, 2};
        Bytes source;
        const Written written = write(format, lengths, source);
        Bytes stored;
        std::uint64_t frame = 0;
        std::uint64_t lastArrival = 0;
        std::size_t n = 0;
        for (std::size_t t = 0; t < lengths.size(); ++t) {
            EXPECT_EQ(written.tracks[t].firstSector, 100 + n);
            EXPECT_EQ(written.tracks[t].firstTime, written.packs[n].time);
            const std::uint64_t trackStart = frame;
            for (; n + 100 <= written.tracks[t].lastSector; ++n) {
                const ReadPack &pack = written.packs[n];
                const std::size_t frames = pack.audio.size() / format.bytesPerFrame();
                const std::size_t unitFrames = format.accessUnitBytes() / format.bytesPerFrame();
                const std::uint64_t inTrack = frame - trackStart;
                const std::uint64_t unit = (inTrack + unitFrames - 1) / unitFrames * unitFrames - inTrack;
                ASSERT_EQ(pack.counter, n % 32);
                ASSERT_EQ(pack.hasSystemHeader, n == 0);
                ASSERT_EQ(pack.pointer, pack.headerBytes - 1 + unit * format.bytesPerFrame());
                ASSERT_LT(unit, frames) << "an access unit starts in every pack";
                ASSERT_EQ(pack.time, 585 + (frame + unit) * 90000 / format.sampleRate);
                if (n > 0) {
                    ASSERT_GE(pack.arrival - lastArrival, 43885U) << "faster than the stream's rate";
                }
                // The tiny tracks behind waste so much of each pack that no disc brings them in time.
                if (t == 0) {
                    ASSERT_LE(pack.arrival / 300, 585 + frame * 90000 / format.sampleRate);
                }
                lastArrival = pack.arrival;
                frame += frames;
                stored.insert(stored.end(), pack.audio.begin(), pack.audio.end());
            }
            EXPECT_EQ(frame - trackStart, (lengths[t] + 1) / 2 * 2);
            EXPECT_EQ(written.tracks[t].length,
                      frame * 90000 / format.sampleRate - trackStart * 90000 / format.sampleRate);
        }
        EXPECT_EQ(n, written.packs.size());
        EXPECT_EQ(unpack(stored, format.bitsPerSample, format.channelAssignment), source);
    }
}

} // namespace
} // namespace kruv::dvda::test
