// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/WavReader.h"

#include "common/ChunkId.h"
#include "common/InputStream.h"
#include "common/LittleEndian.h"
#include "common/ToolError.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace kruv::tools {

namespace {

// Pictures are found in front of the audio, but nothing near this size.
constexpr std::size_t largestHeader = std::size_t(64) * 1024 * 1024;
constexpr std::uint16_t tagPcm = 1;
constexpr std::uint16_t tagExtensible = 0xFFFE;
// The part of an extensible format's GUID behind its first two bytes, which hold the plain format tag.
constexpr std::uint8_t guidTail[14] = {0, 0, 0, 0, 0x10, 0, 0x80, 0, 0, 0xAA, 0, 0x38, 0x9B, 0x71};

// Wave64 names its chunks by GUIDs, whose first four bytes are RIFF's names in small letters.
constexpr std::uint8_t wave64Riff[12] = {0x2E, 0x91, 0xCF, 0x11, 0xA5, 0xD6, 0x28, 0xDB, 0x04, 0xC1, 0, 0};
constexpr std::uint8_t wave64Chunk[12] = {0xF3, 0xAC, 0xD3, 0x11, 0x8C, 0xD1,
                                          0,    0xC0, 0x4F, 0x8E, 0xDB, 0x8A};
constexpr std::size_t wave64Head = 24; // of a chunk; its size counts it

bool looksLikeChunk(std::span<const std::uint8_t> bytes)
{
    return bytes.size() >= 8 && std::all_of(bytes.begin(), bytes.begin() + 4,
                                            [](std::uint8_t c) { return c >= 0x20 && c < 0x7F; });
}

// Programs that write to a pipe put a large round size there: 0xFFFFFFFF, or just below 2 GiB.
bool isPlaceholder(std::uint32_t size)
{
    return size >= 0xFFFFFF00 || (size >= 0x7FFFF000 && size <= 0x80000000);
}

bool isNear(std::uint64_t one, std::uint64_t other)
{
    return one <= other + 1 && other <= one + 1;
}

} // namespace

std::optional<WavReader::Kind> WavReader::kindOf(InputStream &input)
{
    const auto start = input.peek(40);
    const auto is = [&](std::size_t offset, const char *id) { return isId(&start[offset], id); };
    if (start.size() >= 12 && is(8, "WAVE")) {
        if (is(0, "RIFF")) {
            return Kind::Riff;
        }
        if (is(0, "RF64") || is(0, "BW64")) {
            return Kind::Wide;
        }
    }
    if (start.size() == 40 && is(0, "riff") && std::memcmp(&start[4], wave64Riff, sizeof wave64Riff) == 0 &&
        is(24, "wave")) {
        return Kind::Wave64;
    }
    return {};
}

WavReader::Kind WavReader::kindOrRefusal(InputStream &input)
{
    if (const auto kind = kindOf(input)) {
        return *kind;
    }
    const auto start = input.peek(4);
    if (start.size() == 4 && isId(start.data(), "RIFX")) {
        throw ToolError(input.name() + ": this kind of WAV file (RIFX) is not supported");
    }
    throw ToolError(input.name() + " is not a WAV file");
}

bool WavReader::isWav(InputStream &input)
{
    return kindOf(input).has_value();
}

WavReader::WavReader(InputStream &input, WavTolerance tolerance)
    : m_input(input)
    , m_tolerance(tolerance)
    , m_kind(kindOrRefusal(input))
{
    if (m_kind == Kind::Wave64) {
        append(40, "the RIFF header");
        readWave64Chunks();
    } else {
        append(12, "the RIFF header");
        readChunks();
    }
}

std::size_t WavReader::append(std::size_t count, const char *what)
{
    const std::size_t offset = m_header.size();
    if (count > largestHeader - offset) {
        throw ToolError(m_input.name() + ": the chunks before the audio are too large");
    }
    // Grown step by step, so that a false size costs no more memory than there is input.
    while (count > 0) {
        const std::size_t step = std::min(count, std::size_t(1024) * 1024);
        const std::size_t end = m_header.size();
        m_header.resize(end + step);
        m_input.readExactly(std::span(m_header).subspan(end), what);
        count -= step;
    }
    return offset;
}

void WavReader::readChunks()
{
    for (;;) {
        const std::size_t offset = append(8, "the chunks before the audio");
        const std::uint32_t size = readLe32(&m_header[offset + 4]);
        if (isId(&m_header[offset], "data")) {
            const bool wide = m_kind == Kind::Wide && size == 0xFFFFFFFF && m_wideDataSize != 0;
            decideLength(wide ? m_wideDataSize : size, !wide && isPlaceholder(size));
            return;
        }
        append(size, "the chunks before the audio");
        const auto content = std::span<const std::uint8_t>(m_header).subspan(offset + 8, size);
        if (isId(&m_header[offset], "fmt ")) {
            parseFormat(content);
        } else if (m_kind == Kind::Wide && isId(&m_header[offset], "ds64")) {
            parseWideSizes(content);
        }
        skipPadding(size);
    }
}

// Some writers leave the byte out that an odd chunk is filled up with.
void WavReader::skipPadding(std::uint64_t chunkSize)
{
    const auto next = m_input.peek(4);
    const bool isMissing = next.size() == 4 && (isId(next.data(), "data") || isId(next.data(), "fmt ") ||
                                                isId(next.data(), "fact") || isId(next.data(), "LIST"));
    if (chunkSize % 2 != 0 && !isMissing) {
        append(1, "the chunks before the audio");
    }
}

void WavReader::readWave64Chunks()
{
    for (;;) {
        const std::size_t offset = append(wave64Head, "the chunks before the audio");
        const std::uint64_t stated = readLe64(&m_header[offset + 16]);
        const bool isOurs = std::memcmp(&m_header[offset + 4], wave64Chunk, sizeof wave64Chunk) == 0;
        if (isOurs && isId(&m_header[offset], "data")) {
            const bool placeholder = stated < wave64Head || stated >= std::uint64_t{1} << 62;
            decideLength(placeholder ? 0 : stated - wave64Head, placeholder);
            return;
        }
        if (stated < wave64Head || stated > largestHeader) {
            throw ToolError(m_input.name() + ": the chunks before the audio are too large");
        }
        const std::size_t size = stated - wave64Head;
        append(size, "the chunks before the audio");
        if (isOurs && isId(&m_header[offset], "fmt ")) {
            parseFormat(std::span<const std::uint8_t>(m_header).subspan(offset + wave64Head, size));
        }
        append((8 - stated % 8) % 8, "the chunks before the audio");
    }
}

void WavReader::parseWideSizes(std::span<const std::uint8_t> chunk)
{
    if (chunk.size() < 16) {
        throw ToolError(m_input.name() + ": the chunk of 64-bit sizes is too short");
    }
    m_wideDataSize = readLe64(&chunk[8]);
}

void WavReader::parseFormat(std::span<const std::uint8_t> chunk)
{
    const std::string &name = m_input.name();
    if (chunk.size() < 16) {
        throw ToolError(name + ": the format chunk is too short");
    }
    std::uint16_t tag = readLe16(&chunk[0]);
    m_format.extensible = tag == tagExtensible;
    if (m_format.extensible) {
        if (chunk.size() < 40 || std::memcmp(&chunk[26], guidTail, sizeof guidTail) != 0) {
            throw ToolError(name + ": unknown extensible format");
        }
        tag = readLe16(&chunk[24]);
        m_format.channelMask = readLe32(&chunk[20]);
    }
    m_format.channels = readLe16(&chunk[2]);
    m_format.sampleRate = readLe32(&chunk[4]);
    m_format.bitsPerSample = readLe16(&chunk[14]);
    if (m_format.extensible) {
        // The depth inside the container, where it tells one that needs all its bytes.
        const std::uint16_t valid = readLe16(&chunk[18]);
        if (valid < m_format.bitsPerSample && (valid + 7U) / 8 == m_format.bytesPerSample()) {
            m_format.bitsPerSample = valid;
        }
    }
    if (tag != tagPcm) {
        throw ToolError(name + ": the audio is not linear PCM (format tag " + std::to_string(tag) + ")");
    }
    if (m_format.channels == 0 || m_format.bitsPerSample == 0 || m_format.bitsPerSample > 32 ||
        m_format.sampleRate == 0) {
        throw ToolError(name + ": the format chunk makes no sense");
    }
    if (m_tolerance == WavTolerance::None && readLe16(&chunk[12]) != m_format.bytesPerFrame()) {
        throw ToolError(name + ": the format chunk contradicts itself (" + std::to_string(m_format.channels) +
                        " channels of " + std::to_string(m_format.bitsPerSample) + " bit in frames of " +
                        std::to_string(readLe16(&chunk[12])) + " bytes)");
    }
    m_hasFormat = true;
}

// An empty file with chunks behind the audio differs from an unknown length by its RIFF size and by a chunk
// there.
bool WavReader::emptyDataIsMeant() const
{
    if (m_kind == Kind::Wave64) {
        const auto guid = m_input.peek(16);
        return guid.size() == 16 && std::memcmp(&guid[4], wave64Chunk, sizeof wave64Chunk) == 0;
    }
    const std::uint64_t riffEnd = std::uint64_t(readLe32(&m_header[4])) + 8;
    const auto next = m_input.peek(8);
    return looksLikeChunk(next) && m_header.size() + 8 + readLe32(&next[4]) <= riffEnd;
}

void WavReader::decideLength(std::uint64_t stated, bool placeholder)
{
    if (!m_hasFormat) {
        throw ToolError(m_input.name() + ": no format chunk before the audio");
    }
    const auto size = m_input.size();
    const std::uint64_t available = size ? *size - m_input.position() : 0;
    const std::uint64_t riffEnd = std::uint64_t(readLe32(&m_header[4])) + 8;
    const bool fitsTheFile = m_kind == Kind::Riff && size && isNear(*size, riffEnd) && stated <= available;
    const bool unreliable = stated == 0 || (placeholder && !fitsTheFile);
    m_statesLength = !unreliable;
    if (stated == 0 && emptyDataIsMeant()) {
        m_remaining = 0;
    } else if (!unreliable && (!size || stated <= available)) {
        m_remaining = stated;
    } else if (size) {
        m_remaining = available;
        m_endedEarly = !unreliable;
    }
    if (m_remaining) {
        m_audioBytes = *m_remaining - *m_remaining % m_format.bytesPerFrame();
    }
}

std::size_t WavReader::readAudio(std::span<std::uint8_t> destination)
{
    std::size_t wanted = destination.size();
    if (m_remaining) {
        wanted = static_cast<std::size_t>(std::min<std::uint64_t>(wanted, *m_remaining));
    }
    const std::size_t got = m_input.read(destination.first(wanted));
    if (m_remaining) {
        *m_remaining -= got;
    }
    if (got < wanted) {
        m_endedEarly = m_endedEarly || m_remaining.has_value();
    }
    const std::size_t partial = got % m_format.bytesPerFrame();
    const auto rest = destination.subspan(got - partial, partial);
    m_partialFrame.insert(m_partialFrame.end(), rest.begin(), rest.end());
    return got - partial;
}

std::size_t WavReader::readTrailing(std::span<std::uint8_t> destination)
{
    const std::size_t first = std::min(destination.size(), m_partialFrame.size());
    std::copy_n(m_partialFrame.begin(), first, destination.begin());
    m_partialFrame.erase(m_partialFrame.begin(), m_partialFrame.begin() + static_cast<std::ptrdiff_t>(first));
    return first + m_input.read(destination.subspan(first));
}

} // namespace kruv::tools
