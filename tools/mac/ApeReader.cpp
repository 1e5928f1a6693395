// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ApeReader.h"

#include "Level.h"
#include "MacError.h"
#include "TagSkipper.h"

#include <algorithm>

namespace kruv::mac {

using tools::readLe16;
using tools::readLe32;

namespace {

constexpr uint32_t largestFrame = 1000000;
constexpr uint32_t largestInsaneFrame = 10000000;
constexpr std::size_t oldHeaderBytes = 32;
constexpr uint32_t oldBlocksPerFrame = 294912;

} // namespace

ApeReader::ApeReader(const RandomInput &input)
    : m_input(input)
{
    m_start = findStreamStart(input);
    std::array<uint8_t, 6> id{};
    readExactly(m_start, id);
    m_info.version = readLe16(&id[4]);
    if (m_info.version < versionOldest || m_info.version > versionWritten) {
        throw MacError(ErrorNumber::FileVersion, input.name() + ": file version " +
                                                     std::to_string(m_info.version) + " is not supported");
    }
    if (m_info.version >= versionDescriptor) {
        readCurrent();
    } else {
        readOld();
    }
}

void ApeReader::readCurrent()
{
    std::array<uint8_t, descriptorBytes> bytes{};
    readExactly(m_start, bytes);
    const Descriptor descriptor = Descriptor::parse(bytes);
    if (descriptor.descriptorSize < descriptorBytes || descriptor.headerSize < headerBytes) {
        refuse("its headers are too short");
    }
    if (std::any_of(descriptor.md5.begin(), descriptor.md5.end(), [](uint8_t byte) { return byte != 0; })) {
        m_digest = descriptor.md5;
    }

    m_header = {m_start + descriptor.descriptorSize, headerBytes};
    std::array<uint8_t, headerBytes> header{};
    readExactly(m_header.offset, header);
    m_info = parseHeader(header);
    m_info.version = descriptor.version;
    checkInfo();

    m_seekTable = {m_header.offset + descriptor.headerSize, descriptor.seekTableSize};
    m_wavHeader = {m_seekTable.end(), descriptor.wavHeaderSize};
    readSeekTable(m_seekTable);
    // A gap would be a part of the header that a wrong size hides.
    if (m_frameStarts.front() != m_wavHeader.end()) {
        refuse("its sizes contradict each other");
    }
    if (descriptor.frameDataSize > m_input.size()) {
        refuse("it ends before the audio does");
    }
    finishLayout(m_frameStarts.front() + descriptor.frameDataSize, descriptor.tailSize);
}

void ApeReader::readOld()
{
    std::array<uint8_t, oldHeaderBytes> bytes{};
    readExactly(m_start, bytes);
    m_info.level = readLe16(&bytes[6]);
    m_info.flags = readLe16(&bytes[8]);
    m_info.channels = readLe16(&bytes[10]);
    m_info.sampleRate = readLe32(&bytes[12]);
    m_info.totalFrames = readLe32(&bytes[24]);
    m_info.finalFrameBlocks = readLe32(&bytes[28]);
    m_info.blocksPerFrame = oldBlocksPerFrame;
    m_info.bitsPerSample = m_info.flags & flag8Bit ? 8 : m_info.flags & flag24Bit ? 24 : 16;
    checkInfo();

    uint64_t offset = m_start + oldHeaderBytes;
    if (m_info.flags & flagPeakLevel) {
        offset += 4;
    }
    uint32_t elements = m_info.totalFrames;
    if (m_info.flags & flagSeekElements) {
        std::array<uint8_t, 4> count{};
        readExactly(offset, count);
        elements = readLe32(count.data());
        offset += count.size();
    }
    const uint32_t wavHeaderSize = m_info.flags & flagNoWavHeader ? 0 : readLe32(&bytes[16]);
    m_wavHeader = {offset, wavHeaderSize};
    readSeekTable({m_wavHeader.end(), 4 * uint64_t{elements}});
    const uint64_t tailSize = readLe32(&bytes[20]);
    const uint64_t end = findStreamEnd(m_input);
    if (tailSize > end) {
        refuse("it ends before the audio does");
    }
    finishLayout(end - tailSize, tailSize);
}

void ApeReader::checkInfo() const
{
    if (!findLevel(m_info.level)) {
        refuse("its compression level is unknown");
    }
    if (m_info.flags & flagsUnsupported) {
        refuse("its kind of samples is not supported");
    }
    if (m_info.bitsPerSample != 8 && m_info.bitsPerSample != 16 && m_info.bitsPerSample != 24) {
        throw MacError(ErrorNumber::BitDepth, m_input.name() + ": " + std::to_string(m_info.bitsPerSample) +
                                                  " bits per sample are not supported");
    }
    if (m_info.channels != 1 && m_info.channels != 2) {
        throw MacError(ErrorNumber::ChannelCount, m_input.name() + ": " + std::to_string(m_info.channels) +
                                                      " channels are not supported");
    }
    if (m_info.sampleRate == 0) {
        throw MacError(ErrorNumber::SampleRate, m_input.name() + ": the sample rate is 0");
    }
    const uint32_t largest = m_info.level == 5000 ? largestInsaneFrame : largestFrame;
    if (m_info.blocksPerFrame == 0 || m_info.blocksPerFrame > largest) {
        refuse("the frame length makes no sense");
    }
    if (m_info.totalFrames == 0 || m_info.totalFrames > largestFrameCount || m_info.finalFrameBlocks == 0 ||
        m_info.finalFrameBlocks > m_info.blocksPerFrame) {
        refuse("the number of samples makes no sense");
    }
}

void ApeReader::readSeekTable(Range table)
{
    // There may be more entries than frames.
    const uint64_t used = 4 * uint64_t{m_info.totalFrames};
    if (table.size < used || table.end() > m_input.size()) {
        refuse("its seek table is too short");
    }
    std::vector<uint8_t> bytes(static_cast<std::size_t>(used));
    readExactly(table.offset, bytes);
    m_frameStarts.reserve(m_info.totalFrames);
    uint64_t high = 0;
    uint32_t previous = 0;
    for (std::size_t at = 0; at < bytes.size(); at += 4) {
        const uint32_t entry = readLe32(&bytes[at]);
        // Only the lower half of a position is stored.
        if (entry < previous) {
            high += uint64_t{1} << 32;
        }
        previous = entry;
        m_frameStarts.push_back(m_start + high + entry);
    }
}

void ApeReader::finishLayout(uint64_t frameDataEnd, uint64_t tailSize)
{
    const uint64_t headersEnd = std::max(m_wavHeader.end(), m_seekTable.end());
    if (m_frameStarts.front() < headersEnd || frameDataEnd + tailSize > m_input.size() ||
        m_frameStarts.back() > frameDataEnd) {
        refuse("it ends before the audio does");
    }
    m_dataEnd = frameDataEnd;
    m_tail = {frameDataEnd, tailSize};
    m_content = {m_wavHeader.offset, m_tail.end() - m_wavHeader.offset};
    if (m_info.flags & flagsForeignHeader) {
        m_wavHeader.size = m_tail.size = 0;
    }
    if (m_info.flags & flagNoWavHeader) {
        m_wavHeader.size = 0;
    }
}

uint64_t ApeReader::frameEnd(uint32_t frame) const
{
    return frame + 1 < m_frameStarts.size() ? m_frameStarts[frame + 1] : m_dataEnd;
}

FrameBytes ApeReader::frameBytes(uint32_t frame) const
{
    return FrameBytes(m_input, m_frameStarts.front(), m_frameStarts[frame], frameEnd(frame));
}

void ApeReader::read(Range range, const Take &take) const
{
    std::vector<uint8_t> piece(std::size_t{64} * 1024);
    while (range.size > 0) {
        const auto wanted = static_cast<std::size_t>(std::min<uint64_t>(range.size, piece.size()));
        const std::size_t got = m_input.readAt(range.offset, std::span(piece).first(wanted));
        if (got == 0) {
            throw MacError(ErrorNumber::Read, m_input.name() + " became shorter while it was read");
        }
        take(std::span<const uint8_t>(piece).first(got));
        range.offset += got;
        range.size -= got;
    }
}

void ApeReader::readExactly(uint64_t offset, std::span<uint8_t> destination) const
{
    if (m_input.readAt(offset, destination) != destination.size()) {
        refuse("it is cut short");
    }
}

void ApeReader::refuse(const char *why) const
{
    throw MacError(ErrorNumber::InvalidInput, m_input.name() + ": " + why);
}

} // namespace kruv::mac
