// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioStreamFormat.h"

#include <algorithm>
#include <iterator>

namespace kruv {

namespace {

constexpr std::uint32_t widthOfAppleLosslessFlags[] = {0, 16, 20, 24, 32};

std::uint32_t appleLosslessFlags(std::uint32_t width)
{
    for (std::uint32_t flags = 1; flags < std::size(widthOfAppleLosslessFlags); ++flags) {
        if (widthOfAppleLosslessFlags[flags] == width) {
            return flags;
        }
    }
    return 0;
}

std::uint32_t wholeBytes(std::uint32_t bits)
{
    return std::min((bits + 7) / 8 * 8, 32U);
}

/// Players of AAC stop at 48 kHz; the multiples go down to their base.
std::uint32_t aacRate(std::uint32_t rate)
{
    switch (rate) {
    case 96000:
    case 192000:
        return 48000;
    case 88200:
    case 176400:
        return 44100;
    default:
        return rate;
    }
}

} // namespace

std::uint32_t AudioStreamFormat::sampleWidth() const
{
    if (formatType == FormatType::AppleLossless) {
        const bool known = formatFlags >= 1 && formatFlags < std::size(widthOfAppleLosslessFlags);
        return wholeBytes(known ? widthOfAppleLosslessFlags[formatFlags] : bitsPerChannel);
    }
    return bitsPerChannel == 0 ? 16 : wholeBytes(bitsPerChannel);
}

AudioStreamFormat AudioStreamFormat::clientFormat() const
{
    const std::uint32_t width = sampleWidth();
    return {.formatType = FormatType::LinearPcm,
            .formatFlags = isSignedInteger | isPacked,
            .sampleRate = sampleRate,
            .channels = channels,
            .bitsPerChannel = width,
            .bytesPerFrame = width / 8 * channels,
            .channelMask = channelMask};
}

AudioStreamFormat AudioStreamFormat::outputFormat(FormatType type, FileType fileType) const
{
    AudioStreamFormat output = clientFormat();
    output.formatType = type;
    if (type == FormatType::LinearPcm) {
        output.formatFlags |= fileType == FileType::Aiff ? isBigEndian : 0;
        return output;
    }
    output.bytesPerFrame = 0;
    if (type == FormatType::Aac) {
        output.formatFlags = 0;
        output.bitsPerChannel = 0;
        output.sampleRate = aacRate(sampleRate);
    } else {
        output.formatFlags = appleLosslessFlags(sampleWidth());
    }
    return output;
}

} // namespace kruv
