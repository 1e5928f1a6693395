// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameDecoder.h"

#include "FrameFormat.h"
#include "MacError.h"
#include "RangeDecoder.h"
#include "ResidualDecoder.h"
#include "SampleFormat.h"
#include "common/Crc32.h"

#include <algorithm>
#include <optional>

namespace kruv::mac {

namespace {

template <bool Quotients> int32_t getResidual(ResidualDecoder &residuals, RangeDecoder &range)
{
    return Quotients ? residuals.getQuotientCoded(range) : residuals.getHighBitsCoded(range);
}

uint32_t getWord(FrameBytes &bytes)
{
    uint32_t word = 0;
    for (int i = 0; i < 4; ++i) {
        word = word << 8 | bytes.next();
    }
    return word;
}

} // namespace

FrameDecoder::FrameDecoder(const StreamInfo &info, FilterKernel kernel)
    : m_info(info)
    , m_coders{ChannelCoder(findLevel(info.level)->filters, info.version, kernel),
               ChannelCoder(findLevel(info.level)->filters, info.version, kernel)}
{
}

void FrameDecoder::decode(FrameBytes &bytes, std::span<uint8_t> pcm)
{
    const Arithmetic present = m_arithmetic;
    // The first way's failure is the one to report: the others only guess.
    std::optional<MacError> failure;
    for (const Arithmetic way : {present, Arithmetic{false, false}, Arithmetic{true, false},
                                 Arithmetic{false, true}, Arithmetic{true, true}}) {
        const bool needless = way.widePrediction && m_info.bitsPerSample < 24;
        if (failure && (way == present || needless)) {
            continue;
        }
        m_arithmetic = way;
        try {
            bytes.rewind();
            if (tryDecode(bytes, pcm)) {
                return;
            }
            if (!failure) {
                failure.emplace(ErrorNumber::Checksum, "a frame's audio does not match its checksum");
            }
        } catch (const MacError &error) {
            if (!failure) {
                failure = error;
            }
        }
    }
    m_arithmetic = present;
    throw MacError(*failure);
}

bool FrameDecoder::tryDecode(FrameBytes &bytes, std::span<uint8_t> pcm)
{
    const uint32_t checksum = getWord(bytes);
    const uint32_t flags = checksum & frameFlagsFollow ? getWord(bytes) : 0;
    fillFrame(flags, bytes, pcm);
    return tools::crc32(pcm) >> 1 == (checksum & ~frameFlagsFollow);
}

void FrameDecoder::fillFrame(uint32_t flags, FrameBytes &bytes, std::span<uint8_t> pcm)
{
    if (isSilentFrame(flags, m_info.channels)) {
        std::fill(pcm.begin(), pcm.end(), static_cast<uint8_t>(m_info.bitsPerSample == 8 ? 0x80 : 0));
        return;
    }
    withSampleFormat(m_info.bitsPerSample, [&](auto format) {
        using Format = decltype(format);
        if (m_info.version >= 3990) {
            decodeAudio<Format, true>(flags, bytes, pcm);
        } else {
            decodeAudio<Format, false>(flags, bytes, pcm);
        }
    });
}

template <typename Format, bool Quotients>
void FrameDecoder::decodeAudio(uint32_t flags, FrameBytes &bytes, std::span<uint8_t> pcm)
{
    for (ChannelCoder &coder : m_coders) {
        coder.reset();
    }
    if (m_info.channels == 1 || (flags & frameEqualChannels)) {
        decodeSingle<Format, Quotients>(bytes, pcm);
    } else {
        decodePair<Format, Quotients>(bytes, pcm);
    }
}

template <typename Format, bool Quotients>
void FrameDecoder::decodeSingle(FrameBytes &bytes, std::span<uint8_t> pcm)
{
    RangeDecoder range(bytes);
    ResidualDecoder residuals;
    ChannelCoder &coder = m_coders[0];
    const std::size_t blockBytes = m_info.blockBytes();
    for (std::size_t at = 0; at < pcm.size(); at += blockBytes) {
        bytes.prepare();
        const int32_t residual = getResidual<Quotients>(residuals, range);
        Format::store(&pcm[at], coder.decode(residual, 0, m_arithmetic));
        if (m_info.channels == 2) {
            std::copy_n(&pcm[at], Format::bytes, &pcm[at + Format::bytes]);
        }
    }
}

template <typename Format, bool Quotients>
void FrameDecoder::decodePair(FrameBytes &bytes, std::span<uint8_t> pcm)
{
    RangeDecoder range(bytes);
    ResidualDecoder midResiduals;
    ResidualDecoder sideResiduals;
    auto &[midCoder, sideCoder] = m_coders;
    int32_t previousMid = 0;
    for (std::size_t at = 0; at < pcm.size(); at += 2 * Format::bytes) {
        bytes.prepare();
        const int32_t sideResidual = getResidual<Quotients>(sideResiduals, range);
        const int32_t midResidual = getResidual<Quotients>(midResiduals, range);
        const int32_t side = sideCoder.decode(sideResidual, previousMid, m_arithmetic);
        previousMid = midCoder.decode(midResidual, side, m_arithmetic);
        // Wrapping, because damaged data can hold any number.
        const uint32_t first = static_cast<uint32_t>(previousMid) - static_cast<uint32_t>(side / 2);
        Format::store(&pcm[at], static_cast<int32_t>(first));
        Format::store(&pcm[at + Format::bytes], static_cast<int32_t>(first + static_cast<uint32_t>(side)));
    }
}

} // namespace kruv::mac
