// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "AobReader.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace kruv::dvda::test {
namespace {

/// Reads bits, high ones first.
class Bits
{
public:
    explicit Bits(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }

    std::uint64_t take(unsigned count)
    {
        std::uint64_t value = 0;
        for (; count > 0; --count, ++m_position) {
            value = value << 1 | (m_bytes[m_position / 8] >> (7 - m_position % 8) & 1);
        }
        return value;
    }
    void expect(unsigned count, std::uint64_t value)
    {
        EXPECT_EQ(take(count), value) << "bit " << m_position;
    }
    std::size_t byte() const { return m_position / 8; }
    void skipBytes(std::size_t count) { m_position += 8 * count; }
    bool nextIs(unsigned startCode) const { return Bits(m_bytes.subspan(byte())).take(32) == startCode; }

private:
    std::span<const std::uint8_t> m_bytes;
    std::size_t m_position = 0;
};

std::uint64_t takeMarked33(Bits &bits)
{
    std::uint64_t value = bits.take(3);
    bits.expect(1, 1);
    value = value << 15 | bits.take(15);
    bits.expect(1, 1);
    value = value << 15 | bits.take(15);
    bits.expect(1, 1);
    return value;
}

/// WAV positions of the channels of group 1 and group 2.
using Groups = std::pair<std::vector<unsigned>, std::vector<unsigned>>;
const std::map<unsigned, Groups> groupsOfAssignment = {
    {0, {{0}, {}}},     {1, {{0, 1}, {}}},        {3, {{0, 1}, {2, 3}}},
    {7, {{0, 1}, {2}}}, {9, {{0, 1}, {2, 3, 4}}}, {20, {{0, 1, 4, 5}, {2, 3}}},
};

} // namespace

ReadPack readPack(std::span<const std::uint8_t> sector)
{
    ReadPack pack;
    Bits bits(sector);
    bits.expect(32, 0x1BA);
    bits.expect(2, 1);
    pack.arrival = takeMarked33(bits) * 300;
    pack.arrival += bits.take(9);
    bits.expect(1, 1);
    bits.expect(22, 25200);
    bits.expect(2, 3);
    bits.expect(8, 0xF8);

    pack.hasSystemHeader = bits.nextIs(0x1BB);
    if (pack.hasSystemHeader) {
        bits.skipBytes(18);
    }
    bits.expect(32, 0x1BD);
    const std::size_t end = bits.take(16) + bits.byte();
    bits.expect(8, 0x81);
    bits.skipBytes(1);
    const std::size_t optional = bits.take(8);
    bits.expect(4, 2);
    pack.time = takeMarked33(bits);
    bits.skipBytes(optional - 5);

    bits.expect(8, 0xA0);
    pack.counter = static_cast<unsigned>(bits.take(8));
    bits.expect(8, 0);
    pack.headerBytes = static_cast<unsigned>(bits.take(8));
    const std::size_t audioStart = bits.byte() + pack.headerBytes;
    pack.pointer = static_cast<unsigned>(bits.take(16));
    bits.skipBytes(1);
    pack.sampleSizes = static_cast<unsigned>(bits.take(8));
    pack.sampleRates = static_cast<unsigned>(bits.take(8));
    bits.expect(8, 0);
    pack.assignment = static_cast<unsigned>(bits.take(8));
    pack.audio.assign(sector.begin() + static_cast<std::ptrdiff_t>(audioStart),
                      sector.begin() + static_cast<std::ptrdiff_t>(end));

    if (end < sector.size()) {
        Bits rest(sector.subspan(end));
        rest.expect(32, 0x1BE);
        rest.expect(16, sector.size() - end - 6);
        pack.padding = sector.size() - end;
    }
    return pack;
}

std::vector<std::uint8_t> unpack(std::span<const std::uint8_t> stored, unsigned bits, unsigned assignment)
{
    const auto &[first, second] = groupsOfAssignment.at(assignment);
    const std::size_t sampleBytes = bits / 8;
    const std::size_t frameBytes = sampleBytes * (first.size() + second.size());
    std::vector<std::uint8_t> result(stored.size());
    auto next = stored.begin();
    for (std::size_t pair = 0; pair < stored.size(); pair += 2 * frameBytes) {
        const auto sample = [&](std::size_t frame, unsigned channel) {
            return &result.at(pair + frame * frameBytes + channel * sampleBytes);
        };
        for (const auto *group : {&second, &first}) {
            for (std::size_t frame : {0U, 1U}) {
                for (const unsigned channel : *group) {
                    sample(frame, channel)[sampleBytes - 1] = *next++;
                    sample(frame, channel)[sampleBytes - 2] = *next++;
                }
            }
            for (std::size_t frame : {0U, 1U}) {
                for (std::size_t i = 0; bits == 24 && i < group->size(); ++i) {
                    *sample(frame, (*group)[i]) = *next++;
                }
            }
        }
    }
    return result;
}

} // namespace kruv::dvda::test
