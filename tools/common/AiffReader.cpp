// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/AiffReader.h"

#include "common/ChunkId.h"
#include "common/InputStream.h"
#include "common/ToolError.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace kruv::tools {

namespace {

constexpr std::uint32_t largestCommonChunk = 64 * 1024;

std::uint32_t readBe(const std::uint8_t *bytes, unsigned count)
{
    std::uint32_t value = 0;
    for (unsigned i = 0; i < count; ++i) {
        value = value << 8 | bytes[i];
    }
    return value;
}

/// The 80-bit extended number that AIFF stores the sample rate in, rounded; 0 for what is no rate.
std::uint32_t readExtendedRate(const std::uint8_t *bytes)
{
    const int exponent = static_cast<int>(readBe(bytes, 2)) - 16383;
    const double mantissa = readBe(bytes + 2, 4) + readBe(bytes + 6, 4) / 4294967296.0;
    const double rate = std::ldexp(mantissa, exponent - 31);
    return rate >= 1.0 && rate < 4294967295.0 ? static_cast<std::uint32_t>(std::lround(rate)) : 0;
}

} // namespace

AiffReader::AiffReader(InputStream &input)
    : m_input(input)
{
    std::array<std::uint8_t, 12> start{};
    if (input.read(start) != start.size() || !isId(&start[0], "FORM") ||
        !(isId(&start[8], "AIFF") || isId(&start[8], "AIFC"))) {
        throw ToolError(input.name() + " is not an AIFF file");
    }
    readChunks(isId(&start[8], "AIFC"));
}

void AiffReader::readChunks(bool compressible)
{
    for (;;) {
        std::array<std::uint8_t, 8> head{};
        m_input.readExactly(head, "the chunks before the audio");
        const std::uint32_t size = readBe(&head[4], 4);
        if (isId(&head[0], "SSND")) {
            if (m_channels == 0) {
                throw ToolError(m_input.name() + ": no common chunk before the audio");
            }
            beginAudio(size);
            return;
        }
        const std::uint64_t padded = std::uint64_t{size} + size % 2;
        if (isId(&head[0], "COMM") && size <= largestCommonChunk) {
            std::vector<std::uint8_t> chunk(padded);
            m_input.readExactly(chunk, "the common chunk");
            parseCommon(std::span(chunk).first(size), compressible);
        } else if (m_input.skip(padded) != padded) {
            throw ToolError(m_input.name() + " ends before its audio");
        }
    }
}

void AiffReader::parseCommon(std::span<const std::uint8_t> chunk, bool compressible)
{
    if (chunk.size() < 18) {
        throw ToolError(m_input.name() + ": the common chunk is too short");
    }
    m_channels = readBe(&chunk[0], 2);
    m_statedFrames = readBe(&chunk[2], 4);
    m_bitsPerSample = readBe(&chunk[6], 2);
    m_sampleRate = readExtendedRate(&chunk[8]);
    if (compressible) {
        parseCompression(chunk);
    }
    if (m_channels == 0 || m_bitsPerSample == 0 || m_bitsPerSample > 32 || m_sampleRate == 0) {
        throw ToolError(m_input.name() + ": the common chunk makes no sense");
    }
}

void AiffReader::parseCompression(std::span<const std::uint8_t> chunk)
{
    if (chunk.size() < 22) {
        throw ToolError(m_input.name() + ": the common chunk is too short");
    }
    const std::string type(chunk.begin() + 18, chunk.begin() + 22);
    m_littleEndian = type == "sowt";
    if (type != "NONE" && type != "twos" && type != "sowt" && type != "in24" && type != "in32") {
        throw ToolError(m_input.name() + ": the audio is not linear integer PCM (AIFF-C type \"" + type +
                        "\")");
    }
}

void AiffReader::beginAudio(std::uint32_t chunkSize)
{
    std::array<std::uint8_t, 8> head{};
    m_input.readExactly(head, "the sample chunk");
    const std::uint32_t offset = readBe(&head[0], 4);
    if (m_input.skip(offset) != offset) {
        throw ToolError(m_input.name() + " ends before its audio");
    }

    // Programs that write to a pipe leave 0 or a huge number for the sizes.
    const std::uint64_t stated = std::uint64_t{m_statedFrames} * bytesPerFrame();
    const std::uint64_t inChunk = chunkSize >= 8 + std::uint64_t{offset} ? chunkSize - 8 - offset : 0;
    const bool unreliable = (chunkSize == 0 && stated != 0) || chunkSize >= 0x7FFFF000;
    m_statesLength = !unreliable;
    if (!unreliable) {
        m_remaining = stated == 0 ? inChunk : std::min(stated, inChunk);
    }
    if (const auto size = m_input.size()) {
        const std::uint64_t available = *size - m_input.position();
        m_endedEarly = m_remaining && *m_remaining > available;
        m_remaining = std::min(m_remaining.value_or(available), available);
    }
    if (m_remaining) {
        m_audioBytes = *m_remaining - *m_remaining % bytesPerFrame();
    }
}

std::size_t AiffReader::readAudio(std::span<std::uint8_t> destination)
{
    std::size_t wanted = destination.size();
    if (m_remaining) {
        wanted = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, *m_remaining));
    }
    std::size_t got = m_input.read(destination.first(wanted));
    if (m_remaining) {
        *m_remaining -= got;
    }
    if (got < wanted) {
        m_endedEarly = m_endedEarly || m_remaining.has_value();
    }
    got -= got % bytesPerFrame();
    if (!m_littleEndian) {
        reverseSamples(destination.first(got));
    }
    return got;
}

void AiffReader::reverseSamples(std::span<std::uint8_t> audio) const
{
    const auto size = static_cast<std::ptrdiff_t>((m_bitsPerSample + 7) / 8);
    if (size == 1) {
        return;
    }
    for (auto sample = audio.begin(); sample != audio.end(); sample += size) {
        std::reverse(sample, sample + size);
    }
}

} // namespace kruv::tools
