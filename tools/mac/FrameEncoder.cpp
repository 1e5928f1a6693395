// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameEncoder.h"

#include "FrameFormat.h"
#include "RangeEncoder.h"
#include "ResidualEncoder.h"
#include "SampleFormat.h"
#include "common/Crc32.h"

#include <algorithm>

namespace kruv::mac {

FrameEncoder::FrameEncoder(const StreamInfo &info, FilterKernel kernel)
    : m_info(info)
    , m_coders{ChannelCoder(findLevel(info.level)->filters, info.version, kernel),
               ChannelCoder(findLevel(info.level)->filters, info.version, kernel)}
{
}

std::span<const uint8_t> FrameEncoder::encode(std::span<const uint8_t> pcm)
{
    m_output.clear();
    const uint32_t flags = flagsOf(pcm);
    putWord(tools::crc32(pcm) >> 1 | (flags != 0 ? frameFlagsFollow : 0));
    if (flags != 0) {
        putWord(flags);
    }
    withSampleFormat(m_info.bitsPerSample, [&](auto format) {
        using Format = decltype(format);
        if (isSilentFrame(flags, m_info.channels)) {
            RangeEncoder(m_output).finish();
        } else if (m_info.channels == 1 || flags == frameEqualChannels) {
            encodeSingle<Format>(pcm);
        } else {
            encodePair<Format>(pcm);
        }
    });
    return m_output;
}

// A silent channel beside one that sounds is not flagged: it changes nothing for a decoder, and some take it
// for silence of both.
uint32_t FrameEncoder::flagsOf(std::span<const uint8_t> pcm) const
{
    const uint8_t zero = m_info.bitsPerSample == 8 ? 0x80 : 0;
    const bool silent = std::all_of(pcm.begin(), pcm.end(), [zero](uint8_t byte) { return byte == zero; });
    if (m_info.channels == 1) {
        return silent ? frameSecondSilent : 0;
    }
    if (silent) {
        return frameSecondSilent | frameFirstSilent | frameEqualChannels;
    }
    const std::size_t half = m_info.blockBytes() / 2;
    for (std::size_t block = 0; block < pcm.size(); block += 2 * half) {
        const auto first = pcm.subspan(block, half);
        if (!std::equal(first.begin(), first.end(),
                        pcm.begin() + static_cast<std::ptrdiff_t>(block + half))) {
            return 0;
        }
    }
    return frameEqualChannels;
}

void FrameEncoder::putWord(uint32_t word)
{
    for (int shift = 24; shift >= 0; shift -= 8) {
        m_output.push_back(static_cast<uint8_t>(word >> shift));
    }
}

template <typename Format> void FrameEncoder::encodeSingle(std::span<const uint8_t> pcm)
{
    RangeEncoder range(m_output);
    ResidualEncoder residuals;
    ChannelCoder &coder = m_coders[0];
    coder.reset();
    for (std::size_t at = 0; at < pcm.size(); at += m_info.blockBytes()) {
        residuals.put(range, coder.encode(Format::load(&pcm[at]), 0));
    }
    range.finish();
}

template <typename Format> void FrameEncoder::encodePair(std::span<const uint8_t> pcm)
{
    RangeEncoder range(m_output);
    ResidualEncoder midResiduals;
    ResidualEncoder sideResiduals;
    auto &[midCoder, sideCoder] = m_coders;
    midCoder.reset();
    sideCoder.reset();
    int32_t previousMid = 0;
    for (std::size_t at = 0; at < pcm.size(); at += 2 * Format::bytes) {
        const int32_t first = Format::load(&pcm[at]);
        const int32_t side = Format::load(&pcm[at + Format::bytes]) - first;
        const int32_t mid = first + side / 2;
        sideResiduals.put(range, sideCoder.encode(side, previousMid));
        midResiduals.put(range, midCoder.encode(mid, side));
        previousMid = mid;
    }
    range.finish();
}

} // namespace kruv::mac
