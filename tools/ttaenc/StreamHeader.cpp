// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/StreamHeader.h"

#include "common/Crc32.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace kruv::ttaenc {

using tools::readLe16;
using tools::readLe32;
using tools::ToolError;
using tools::writeLe16;
using tools::writeLe32;

namespace {

constexpr unsigned kindInteger = 1;
constexpr unsigned kindEncrypted = 2;
constexpr std::size_t checkedBytes = StreamHeader::bytes - 4;

void checkLimits(const tools::WavFormat &format)
{
    if (format.bitsPerSample == 0 || format.bitsPerSample > 24) {
        throw ToolError(std::to_string(format.bitsPerSample) + " bits per sample are not supported");
    }
    if (format.channels == 0 || format.channels > StreamHeader::largestChannels) {
        throw ToolError(std::to_string(format.channels) + " channels are not supported");
    }
    if (format.sampleRate == 0 || format.sampleRate > StreamHeader::largestSampleRate) {
        throw ToolError("a sample rate of " + std::to_string(format.sampleRate) + " Hz is not supported");
    }
}

} // namespace

StreamHeader::StreamHeader(const tools::WavFormat &format, std::uint64_t steps)
    : m_format(format)
    , m_steps(static_cast<std::uint32_t>(steps))
{
    if (format.bitsPerSample < 8) {
        throw ToolError("TTA holds 8 to 24 bits per sample, not " + std::to_string(format.bitsPerSample));
    }
    checkLimits(format);
    if (steps > 0xFFFFFFFF) {
        throw ToolError("the audio is too long for a TTA file");
    }
}

StreamHeader::StreamHeader(tools::InputStream &input)
{
    std::array<std::uint8_t, bytes> raw = {};
    if (input.peek(4).size() < 4 || std::memcmp(input.peek(4).data(), "TTA1", 4) != 0) {
        throw ToolError(input.name() + " is not a TTA file");
    }
    input.readExactly(raw, "the TTA header");
    if (tools::crc32(std::span(raw).first(checkedBytes)) != readLe32(&raw[checkedBytes])) {
        throw ToolError(input.name() + ": the TTA header is damaged (checksum mismatch)");
    }
    const unsigned kind = readLe16(&raw[4]);
    if (kind != kindInteger) {
        throw ToolError(input.name() + (kind == kindEncrypted ? " is protected by a password"
                                                              : " does not hold integer samples"));
    }
    m_format.channels = readLe16(&raw[6]);
    m_format.bitsPerSample = readLe16(&raw[8]);
    m_format.sampleRate = readLe32(&raw[10]);
    m_steps = readLe32(&raw[14]);
    checkLimits(m_format);
}

std::array<std::uint8_t, StreamHeader::bytes> StreamHeader::toBytes() const
{
    std::array<std::uint8_t, bytes> raw = {};
    std::memcpy(raw.data(), "TTA1", 4);
    writeLe16(&raw[4], kindInteger);
    writeLe16(&raw[6], m_format.channels);
    writeLe16(&raw[8], m_format.bitsPerSample);
    writeLe32(&raw[10], m_format.sampleRate);
    writeLe32(&raw[14], m_steps);
    writeLe32(&raw[checkedBytes], tools::crc32(std::span(raw).first(checkedBytes)));
    return raw;
}

std::uint32_t StreamHeader::stepsPerFrame() const
{
    // 256/245 seconds, rounded down.
    return std::max(1u, static_cast<std::uint32_t>(std::uint64_t(m_format.sampleRate) * 256 / 245));
}

std::uint32_t StreamHeader::frameCount() const
{
    const std::uint32_t full = m_steps / stepsPerFrame();
    return full + (m_steps % stepsPerFrame() != 0);
}

std::uint32_t StreamHeader::stepsInFrame(std::uint32_t frame) const
{
    const std::uint64_t before = std::uint64_t(frame) * stepsPerFrame();
    return static_cast<std::uint32_t>(std::min<std::uint64_t>(stepsPerFrame(), m_steps - before));
}

} // namespace kruv::ttaenc
