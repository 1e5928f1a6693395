// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "LpcmFormat.h"

#include "common/ToolError.h"

#include <algorithm>
#include <bit>

namespace kruv::dvda {
namespace {

using tools::ToolError;

constexpr std::uint64_t largestBitRate = 9'600'000; // bit/s, of the audio alone

struct RateCode
{
    std::uint32_t sampleRate;
    std::uint8_t code;
    unsigned multiple; ///< of 44.1 or 48 kHz
};
constexpr RateCode rateCodes[] = {
    {48000, 0x0, 1}, {96000, 0x1, 2}, {192000, 0x2, 4}, {44100, 0x8, 1}, {88200, 0x9, 2}, {176400, 0xA, 4},
};

// Speakers as bits of the WAVEFORMATEXTENSIBLE mask: L 1, R 2, C 4, LFE 8, Ls 10, Rs 20, single rear 100
// (hex). Within a group the storage order is that of the bits. Where several assignments fit a set of
// speakers, the one that every known reader agrees on is taken.
struct Assignment
{
    std::uint32_t speakers;
    std::uint8_t code;
    std::uint32_t secondGroup;
};
constexpr Assignment assignments[] = {
    {0x004, 0, 0x000}, {0x003, 1, 0x000},  {0x103, 2, 0x100},  {0x033, 3, 0x030}, {0x00B, 4, 0x008},
    {0x10B, 5, 0x108}, {0x03B, 6, 0x038},  {0x007, 7, 0x004},  {0x107, 8, 0x104}, {0x037, 9, 0x034},
    {0x00F, 10, 0x0C}, {0x10F, 11, 0x10C}, {0x03F, 20, 0x00C},
};
constexpr std::uint32_t usualSpeakers[] = {0, 0x004, 0x003, 0x007, 0x033, 0x037, 0x03F};

const RateCode *findRate(std::uint32_t sampleRate)
{
    const auto *found = std::ranges::find(rateCodes, sampleRate, &RateCode::sampleRate);
    return found == std::end(rateCodes) ? nullptr : found;
}

const Assignment &assignmentFor(unsigned channels, std::uint32_t mask)
{
    // Side speakers take the place of back speakers where there are no back ones.
    if ((mask & 0x600) == 0x600 && (mask & 0x30) == 0) {
        mask = (mask & ~0x600U) | 0x30;
    }
    const auto *found = std::ranges::find(assignments, mask, &Assignment::speakers);
    if (found == std::end(assignments) || std::popcount(mask) != static_cast<int>(channels)) {
        found = std::ranges::find(assignments, usualSpeakers[channels], &Assignment::speakers);
    }
    return *found;
}

std::uint32_t secondGroupChannels(const Assignment &assignment)
{
    std::uint32_t result = 0;
    unsigned channel = 0;
    for (std::uint32_t speaker = 1; speaker <= assignment.speakers; speaker <<= 1) {
        if ((assignment.speakers & speaker) == 0) {
            continue;
        }
        if ((assignment.secondGroup & speaker) != 0) {
            result |= 1U << channel;
        }
        ++channel;
    }
    return result;
}

} // namespace

std::size_t LpcmFormat::accessUnitBytes() const
{
    return std::size_t{40} * findRate(sampleRate)->multiple * bytesPerFrame();
}

std::array<std::uint8_t, 3> LpcmFormat::code() const
{
    const unsigned size = bitsPerSample == 16 ? 0 : 2;
    const unsigned rate = findRate(sampleRate)->code;
    const bool twoGroups = secondGroupChannels != 0;
    return {static_cast<std::uint8_t>(size << 4 | (twoGroups ? size : 0xF)),
            static_cast<std::uint8_t>(rate << 4 | (twoGroups ? rate : 0xF)),
            static_cast<std::uint8_t>(channelAssignment)};
}

std::string LpcmFormat::description() const
{
    return std::to_string(sampleRate) + " Hz, " + std::to_string(bitsPerSample) + " bit, " +
           std::to_string(channels) + (channels == 1 ? " channel" : " channels");
}

std::vector<std::uint8_t> LpcmFormat::pairPermutation() const
{
    std::vector<std::uint8_t> result;
    const std::size_t size = bytesPerSample();
    const auto appendBytes = [&](std::uint32_t group, std::initializer_list<std::size_t> bytesOfSample) {
        for (std::size_t frame = 0; frame < 2; ++frame) {
            for (std::size_t channel = 0; channel < channels; ++channel) {
                if ((group >> channel & 1) == 0) {
                    continue;
                }
                for (const std::size_t byte : bytesOfSample) {
                    result.push_back(
                        static_cast<std::uint8_t>(frame * bytesPerFrame() + channel * size + byte));
                }
            }
        }
    };
    for (const std::uint32_t group : {secondGroupChannels, ~secondGroupChannels}) {
        appendBytes(group, {size - 1, size - 2});
        if (size == 3) {
            appendBytes(group, {0});
        }
    }
    return result;
}

LpcmFormat lpcmFormat(std::uint32_t sampleRate, unsigned bitsPerSample, unsigned channels,
                      std::uint32_t channelMask)
{
    if (findRate(sampleRate) == nullptr) {
        throw ToolError("DVD-Audio has no sample rate of " + std::to_string(sampleRate) +
                        " Hz, only 44100, 48000, 88200, 96000, 176400 and 192000");
    }
    if (bitsPerSample == 0 || bitsPerSample > 24) {
        throw ToolError("DVD-Audio holds at most 24 bit, not " + std::to_string(bitsPerSample));
    }
    if (channels == 0 || channels > 6) {
        throw ToolError("DVD-Audio holds 1 to 6 channels, not " + std::to_string(channels));
    }

    const Assignment &assignment = assignmentFor(channels, channelMask);
    const LpcmFormat format{sampleRate, bitsPerSample <= 16 ? 16U : 24U, channels, assignment.code,
                            secondGroupChannels(assignment)};
    const std::uint64_t bitRate = std::uint64_t{8} * format.bytesPerFrame() * sampleRate;
    if (bitRate > largestBitRate || (findRate(sampleRate)->multiple == 4 && channels > 2)) {
        throw ToolError("DVD-Audio cannot hold uncompressed audio of " + format.description() +
                        ": the disc is not read fast enough");
    }
    return format;
}

} // namespace kruv::dvda
