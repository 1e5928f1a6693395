// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PackWriter.h"

#include <algorithm>
#include <initializer_list>

namespace kruv::dvda {
namespace {

constexpr std::uint64_t systemClock = 27'000'000; // Hz
constexpr std::uint64_t timeStampClock = 90'000;  // Hz
constexpr std::uint64_t bytesPerSecond = 1'260'000;
/// How long four packs need to arrive, after which the first one is played; 90 kHz.
constexpr std::uint64_t startTime = 585;
/// The time one pack needs to arrive, rounded up; 27 MHz.
constexpr std::uint64_t packTime = 43'886;

constexpr std::size_t packHeaderBytes = 14;
constexpr std::size_t lpcmHeaderBytes = 14;
constexpr std::size_t smallestPadding = 8;

constexpr std::array<std::uint8_t, 18> systemHeader = {0,    0,    1,    0xBB, 0,    0x0C, 0x80, 0xC4, 0xE1,
                                                       0x04, 0xA0, 0x7F, 0xB8, 0xC0, 0x40, 0xBD, 0xE0, 0x0A};

/// Fills one sector from its start on.
class Pack
{
public:
    void bytes(std::initializer_list<std::size_t> values)
    {
        for (const std::size_t value : values) {
            m_data.at(m_used++) = static_cast<std::uint8_t>(value);
        }
    }
    void bytes(std::span<const std::uint8_t> values)
    {
        std::ranges::copy(values, std::span(m_data).subspan(m_used, values.size()).begin());
        m_used += values.size();
    }
    void u16(std::size_t value) { bytes({value >> 8, value}); }
    void fill(std::size_t count, std::uint8_t value)
    {
        std::ranges::fill(std::span(m_data).subspan(m_used, count), value);
        m_used += count;
    }
    std::span<const std::uint8_t> data() const { return m_data; }

    void header(std::uint64_t arrival);
    void timeStamp(std::uint64_t time);

private:
    std::array<std::uint8_t, sectorBytes> m_data{};
    std::size_t m_used = 0;
};

/// The pack header: when the pack arrives (33 bits of 90 kHz, 9 bits of 27 MHz, marker bits between) and the
/// rate of the stream.
void Pack::header(std::uint64_t arrival)
{
    const std::uint64_t base = arrival / 300;
    const std::uint64_t rest = arrival % 300;
    bytes({0, 0, 1, 0xBA});
    bytes({0x44 | (base >> 27 & 0x38) | (base >> 28 & 0x03), base >> 20,
           0x04 | (base >> 12 & 0xF8) | (base >> 13 & 0x03), base >> 5, 0x04 | (base << 3 & 0xF8) | rest >> 7,
           0x01 | (rest << 1 & 0xFE)});
    bytes({0x01, 0x89, 0xC3, 0xF8});
}

void Pack::timeStamp(std::uint64_t time)
{
    bytes({0x21 | (time >> 29 & 0x0E), time >> 22, 0x01 | (time >> 14 & 0xFE), time >> 7,
           0x01 | (time << 1 & 0xFE)});
}

} // namespace

PackWriter::PackWriter(const LpcmFormat &format, std::uint32_t firstSector, tools::ByteSink &sink)
    : m_format(format)
    , m_permutation(format.pairPermutation())
    , m_firstSector(firstSector)
    , m_sink(sink)
{
}

void PackWriter::write(std::span<const std::uint8_t> frames)
{
    const std::size_t pairBytes = 2 * m_format.bytesPerFrame();
    if (!m_unpaired.empty() && !frames.empty()) {
        const auto partner = frames.first(pairBytes / 2);
        m_unpaired.insert(m_unpaired.end(), partner.begin(), partner.end());
        storePairs(m_unpaired);
        m_unpaired.clear();
        frames = frames.subspan(pairBytes / 2);
    }
    const std::size_t paired = frames.size() / pairBytes * pairBytes;
    storePairs(frames.first(paired));
    const auto single = frames.subspan(paired);
    m_unpaired.insert(m_unpaired.end(), single.begin(), single.end());

    // Enough is held back that the track's last pack has at least one whole access unit.
    while (waiting() >= capacity() + m_format.accessUnitBytes()) {
        writePack(capacity());
    }
    m_stored.erase(m_stored.begin(), m_stored.begin() + static_cast<std::ptrdiff_t>(m_taken));
    m_taken = 0;
}

Track PackWriter::endTrack()
{
    if (!m_unpaired.empty()) {
        m_unpaired.resize(2 * m_format.bytesPerFrame());
        storePairs(m_unpaired);
        m_unpaired.clear();
    }
    while (waiting() > 0) {
        if (waiting() <= capacity()) {
            writePack(waiting());
        } else {
            writePack(std::min(capacity(), waiting() - m_format.accessUnitBytes()));
        }
    }

    const std::uint64_t end = m_trackStart + m_trackBytes / m_format.bytesPerFrame();
    const auto ticks = [this](std::uint64_t frame) { return frame * timeStampClock / m_format.sampleRate; };
    const Track track{m_firstSector + m_trackFirstPack, m_firstSector + m_packs - 1,
                      static_cast<std::uint32_t>(startTime + ticks(m_trackStart)),
                      static_cast<std::uint32_t>(ticks(end) - ticks(m_trackStart))};
    m_trackStart = end;
    m_trackBytes = 0;
    m_trackFirstPack = m_packs;
    return track;
}

void PackWriter::storePairs(std::span<const std::uint8_t> frames)
{
    std::size_t to = m_stored.size();
    m_stored.resize(to + frames.size());
    const std::size_t pairBytes = m_permutation.size();
    for (std::size_t pair = 0; pair < frames.size(); pair += pairBytes) {
        for (const std::uint8_t from : m_permutation) {
            m_stored[to++] = frames[pair + from];
        }
    }
}

/// Bytes of the next pack that audio can fill.
std::size_t PackWriter::room() const
{
    const std::size_t packetHeader = m_packs == 0 ? systemHeader.size() + 17 : 14;
    return sectorBytes - packHeaderBytes - packetHeader - lpcmHeaderBytes;
}

std::size_t PackWriter::capacity() const
{
    // Two frame pairs in mono, so that a pack's audio is a multiple of four bytes in any format.
    const std::size_t unit = (m_format.channels == 1 ? 4 : 2) * m_format.bytesPerFrame();
    return room() / unit * unit;
}

/// When the next pack arrives, in 27 MHz: the first four at the stream's rate, a later one when the fourth
/// before it has been played.
std::uint64_t PackWriter::arrivalTime() const
{
    if (m_packs < 4) {
        return m_packs * sectorBytes * systemClock / bytesPerSecond;
    }
    const std::uint64_t played = m_firstFrames[(m_packs - 3) % 4] * systemClock / m_format.sampleRate;
    return std::max(startTime * 300 + played, m_lastArrival + packTime);
}

void PackWriter::writePack(std::size_t audioBytes)
{
    const bool first = m_packs == 0;
    const std::size_t unitBytes = m_format.accessUnitBytes();
    const std::size_t toNextUnit = (unitBytes - m_trackBytes % unitBytes) % unitBytes;
    const std::uint64_t firstFrame = m_trackStart + m_trackBytes / m_format.bytesPerFrame();
    const std::uint64_t stampedFrame = firstFrame + toNextUnit / m_format.bytesPerFrame();

    const std::size_t rest = room() - audioBytes;
    const bool padded = rest >= smallestPadding;
    const std::size_t stuffing = padded ? 0 : rest;
    const std::size_t stampBytes = first ? 8 : 5; // the first one tells the decoder's buffer size too

    m_lastArrival = arrivalTime();
    Pack pack;
    pack.header(m_lastArrival);
    if (first) {
        pack.bytes(systemHeader);
    }
    pack.bytes({0, 0, 1, 0xBD});
    pack.u16(3 + stampBytes + lpcmHeaderBytes + stuffing + audioBytes);
    pack.bytes({0x81, first ? 0x81U : 0x80U, stampBytes});
    pack.timeStamp(startTime + stampedFrame * timeStampClock / m_format.sampleRate);
    if (first) {
        pack.bytes({0x1E, 0x60, 0x0A});
    }

    const std::size_t headerRest = lpcmHeaderBytes - 4 + stuffing;
    const auto [sizes, rates, assignment] = m_format.code();
    pack.bytes({0xA0, m_packs % 32, 0, headerRest});
    pack.u16(headerRest - 1 + toNextUnit);
    pack.bytes({m_format.hasDownmix() ? 0x00U : 0x10U, sizes, rates, 0, assignment});
    pack.bytes({0x80, 0, 0}); // neutral dynamics, no copy restrictions
    pack.fill(stuffing, 0);

    pack.bytes(std::span<const std::uint8_t>(m_stored).subspan(m_taken, audioBytes));
    if (padded) {
        pack.bytes({0, 0, 1, 0xBE});
        pack.u16(rest - 6);
        pack.fill(rest - 6, 0xFF);
    }
    m_sink.write(pack.data());

    m_firstFrames[m_packs % 4] = firstFrame;
    ++m_packs;
    m_taken += audioBytes;
    m_trackBytes += audioBytes;
}

} // namespace kruv::dvda
