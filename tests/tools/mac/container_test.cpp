// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ForeignFile.h"
#include "MacTestSupport.h"
#include "common/LittleEndian.h"
#include "mac/MacError.h"

#include <gtest/gtest.h>
#include <openssl/evp.h>
#include <random>
#include <string>

namespace kruv::mac::test {

namespace {

constexpr Format stereo{16, 2};
constexpr unsigned levels[] = {1000, 2000, 3000, 4000, 5000};

Bytes slice(const Bytes &bytes, std::size_t from, std::size_t to)
{
    return Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(from),
                 bytes.begin() + static_cast<std::ptrdiff_t>(to));
}

Bytes chunk(const std::string &id, const Bytes &content)
{
    Bytes result = bytesOf(id + "    ");
    tools::writeLe32(&result[4], static_cast<uint32_t>(content.size()));
    result = result + content;
    result.resize(result.size() + content.size() % 2);
    return result;
}

ErrorNumber errorOf(const Bytes &ape)
{
    try {
        decompressed(ape);
    } catch (const MacError &error) {
        return error.number();
    }
    ADD_FAILURE() << "nothing was wrong";
    return ErrorNumber::Undefined;
}

Bytes extensible(const Bytes &audio)
{
    Bytes format = slice(wavHeader(stereo, 0), 20, 36);
    tools::writeLe16(format.data(), 0xFFFE);
    format = format + Bytes{22, 0, 16,   0, 3,    0, 0, 0,    1, 0,    0,    0,
                            0,  0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};
    return bytesOf("RIFF\xFF\x01\x02\x03WAVE") + chunk("fmt ", format) + chunk("data", audio);
}

} // namespace

TEST(Container, KeepsEveryByteAroundTheAudio)
{
    const Bytes audio = makeAudio(Signal::Music, stereo, 500);
    const Bytes list = chunk("LIST", bytesOf("INFOIART\x03") + Bytes(3) + bytesOf("abc"));
    const Bytes plain = wavFile(stereo, audio);
    const Bytes start = slice(plain, 0, 36);
    const std::pair<const char *, Bytes> sources[] = {
        {"chunks behind", plain + list + chunk("odd ", {1, 2, 3})},
        {"chunks before", slice(plain, 0, 12) + list + slice(plain, 12, plain.size())},
        {"extensible", extensible(audio)},
        {"odd length", wavFile({8, 1}, makeAudio(Signal::Music, {8, 1}, 501))},
        {"odd length, chunk behind", wavFile({24, 1}, makeAudio(Signal::Music, {24, 1}, 501)) + list},
        {"part of a block", start + chunk("data", audio + Bytes{1, 2, 3})},
        {"size smaller than the file", wavHeader(stereo, 400) + audio},
    };
    for (const auto &[name, wav] : sources) {
        const TemporaryFolder folder;
        EXPECT_TRUE(decompressed(readFile(compressed(folder, wav, 2000))) == wav) << name;
    }
}

TEST(Container, RepairsSizesOfStreams)
{
    const Bytes audio = makeAudio(Signal::Music, stereo, 500);
    const Bytes right = wavFile(stereo, audio);
    for (const uint32_t stated : {0U, 0xFFFFFFFFU, 0x7FFFFFFFU, 0xFFFFFFDBU, 4000U}) {
        const TemporaryFolder folder;
        folder.write("lie.wav", wavHeader(stereo, stated) + audio + Bytes{7});
        const std::string ape = shellWord(folder.path("out.ape"));
        for (const std::string &source :
             {"cat " + shellWord(folder.path("lie.wav")) + " | " + macProgram() + " - ",
              macProgram() + " " + shellWord(folder.path("lie.wav")) + " "}) {
            EXPECT_EQ(runShell(source + ape + " -c1000").status, 0) << stated;
            EXPECT_TRUE(decompressed(readFile(folder.path("out.ape"))) == right) << stated;
            EXPECT_TRUE(decodedByFfmpeg(folder.path("out.ape"), stereo) == audio) << stated;
        }
    }
}

// The order of what the checksum covers is not the order in the file.
TEST(Container, Md5CoversHeaderDataFramesTailHeaderSeekTable)
{
    const TemporaryFolder folder;
    const Bytes wav =
        wavFile(stereo, makeAudio(Signal::Music, stereo, 80000)) + chunk("LIST", bytesOf("tail"));
    const Bytes ape = readFile(compressed(folder, wav, 1000));
    const std::size_t seekTable = 52 + 24;
    const std::size_t content = seekTable + 8;
    const Bytes covered =
        slice(ape, content, ape.size()) + slice(ape, 52, seekTable) + slice(ape, seekTable, content);
    Bytes digest(16);
    ASSERT_EQ(EVP_Digest(covered.data(), covered.size(), digest.data(), nullptr, EVP_md5(), nullptr), 1);
    EXPECT_EQ(slice(ape, 36, 52), digest);
}

TEST(Container, AcceptsTagsSpareSeekEntriesAndNoChecksum)
{
    const TemporaryFolder folder;
    const Bytes wav = wavFile(stereo, makeAudio(Signal::Music, stereo, 80000));
    Bytes ape = readFile(compressed(folder, wav, 1000));
    Bytes footer = bytesOf("APETAGEX") + Bytes(24);
    tools::writeLe32(&footer[12], 32);
    const Bytes id3v2 = bytesOf("ID3\x03") + Bytes{0, 0, 0, 0, 0, 20} + Bytes(20, 'x') + Bytes(9);
    EXPECT_TRUE(decompressed(id3v2 + ape + footer + bytesOf("TAG") + Bytes(125)) == wav);

    Bytes spare = slice(ape, 0, 84) + Bytes(40) + slice(ape, 84, ape.size());
    tools::writeLe32(&spare[16], 48);
    for (const std::size_t entry : {76U, 80U}) {
        tools::writeLe32(&spare[entry], tools::readLe32(&spare[entry]) + 40);
    }
    EXPECT_EQ(errorOf(spare), ErrorNumber::Checksum);
    std::fill_n(&spare[36], 16, uint8_t{0});
    EXPECT_TRUE(decompressed(spare) == wav);
}

TEST(Container, ReadsOlderVersions)
{
    const TemporaryFolder folder;
    for (const unsigned bits : {16U, 24U}) {
        const Format format{bits, 2};
        const Bytes audio = makeAudio(Signal::Silence, format, 300) + makeAudio(Signal::Music, format, 6000) +
                            makeAudio(Signal::Impulses, format, 3000);
        for (const uint16_t version : std::initializer_list<uint16_t>{3950, 3970, 3980}) {
            for (const unsigned level : levels) {
                ForeignFile maker{version, static_cast<uint16_t>(level), {}};
                // What ffmpeg 5.1 expects there.
                if (bits == 24 && level == 5000) {
                    maker.arithmetic = {true, true};
                }
                maker.withPeakLevel = level % 2000 == 0;
                maker.withSeekElements = level > 2000;
                const Bytes ape = maker.make(format, audio);
                folder.write("old.ape", ape);
                SCOPED_TRACE(std::to_string(version) + " at " + std::to_string(level));
                EXPECT_TRUE(decompressed(ape) == wavFile(format, audio));
                EXPECT_TRUE(decodedByFfmpeg(folder.path("old.ape"), format) == audio);
            }
        }
    }
}

// Sums that leave 32 bits were once kept in 64: only the checksum tells.
TEST(Container, ReadsEveryArithmeticOfWriters)
{
    constexpr Format format{24, 2};
    const Bytes audio = makeExtremes(format, 4000) + makeAudio(Signal::Noise, format, 4000);
    const Bytes usual = ForeignFile{3990, 5000, {}}.make(format, audio);
    for (const Arithmetic arithmetic :
         {Arithmetic{false, true}, Arithmetic{true, true}, Arithmetic{true, false}}) {
        for (const unsigned level : levels) {
            const Bytes ape = ForeignFile{3990, static_cast<uint16_t>(level), arithmetic}.make(format, audio);
            EXPECT_TRUE(decompressed(ape) == wavFile(format, audio)) << level;
        }
    }
    EXPECT_FALSE((ForeignFile{3990, 5000, {false, true}}.make(format, audio) == usual))
        << "the signal does not leave 32 bits";
}

TEST(Container, NumbersWhatItCannotRead)
{
    const TemporaryFolder folder;
    const Bytes good =
        readFile(compressed(folder, wavFile(stereo, makeAudio(Signal::Music, stereo, 100)), 1000));
    const auto with = [&](std::size_t place, uint32_t value) {
        Bytes bad = good;
        tools::writeLe16(&bad[place], value);
        return bad;
    };
    EXPECT_EQ(errorOf({}), ErrorNumber::InvalidInput);
    EXPECT_EQ(errorOf(Bytes(5000, 'x')), ErrorNumber::InvalidInput);
    EXPECT_EQ(errorOf(with(4, 3800)), ErrorNumber::FileVersion);
    EXPECT_EQ(errorOf(with(4, 4200)), ErrorNumber::FileVersion);
    EXPECT_EQ(errorOf(with(52, 6000)), ErrorNumber::InvalidInput);
    EXPECT_EQ(errorOf(with(54, 4096)), ErrorNumber::InvalidInput);
    EXPECT_EQ(errorOf(with(68, 32)), ErrorNumber::BitDepth);
    EXPECT_EQ(errorOf(with(70, 6)), ErrorNumber::ChannelCount);
    EXPECT_EQ(errorOf(with(66, 0xFFFF)), ErrorNumber::InvalidInput);

    const auto refusal = [&](Format format, const Bytes &audio) {
        try {
            compressed(folder, wavFile(format, audio), 2000);
        } catch (const MacError &error) {
            return error.number();
        }
        return ErrorNumber::Undefined;
    };
    EXPECT_EQ(refusal({32, 2}, Bytes(800)), ErrorNumber::BitDepth);
    EXPECT_EQ(refusal({16, 6}, Bytes(1200)), ErrorNumber::ChannelCount);
    EXPECT_EQ(refusal(stereo, {}), ErrorNumber::InputTooSmall);
}

TEST(Damage, EveryCutIsNoticed)
{
    const TemporaryFolder folder;
    const Bytes wav =
        wavFile({16, 1}, makeAudio(Signal::Music, {16, 1}, 80000)) + chunk("LIST", bytesOf("tail"));
    const Bytes current = readFile(compressed(folder, wav, 1000));
    const Bytes old = ForeignFile{3970, 2000, {}}.make(stereo, makeAudio(Signal::Music, stereo, 3000));
    std::mt19937 random(11);
    for (const Bytes &ape : {current, old}) {
        for (int round = 0; round < 200; ++round) {
            // The old kind ends in padding that nothing needs.
            const std::size_t length = random() % (ape.size() - 8);
            EXPECT_THROW(decompressed(slice(ape, 0, length)), MacError) << length;
        }
    }
}

TEST(Damage, EveryFlippedBitIsNoticedOrHarmless)
{
    const TemporaryFolder folder;
    std::mt19937 random(5);
    for (const unsigned level : levels) {
        const Bytes wav =
            wavFile({16, 1}, makeAudio(Signal::Music, {16, 1}, 3000)) + chunk("LIST", bytesOf("tail"));
        Bytes ape = readFile(compressed(folder, wav, level));
        for (int round = 0; round < 100; ++round) {
            // Every second one hits the headers.
            const std::size_t place = random() % (round % 2 ? 128 : ape.size());
            const auto mask = static_cast<uint8_t>(1U << random() % 8);
            ape[place] ^= mask;
            try {
                EXPECT_TRUE(decompressed(ape) == wav && place < 52)
                    << "level " << level << ", byte " << place;
            } catch (const MacError &) {
            }
            ape[place] ^= mask;
        }
    }
}

} // namespace kruv::mac::test
