// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Mp4Writer.h"

#include "BoxBuilder.h"
#include "common/OutputFile.h"

#include <limits>
#include <utility>

namespace kruv::aacplusenc {

Mp4Writer::Mp4Writer(tools::OutputFile &output, AacTrack track)
    : m_output(output)
    , m_track(std::move(track))
{
    // About a second, so that a player need not jump far to and fro.
    m_track.accessUnitsPerChunk = 1 + m_track.sampleRate / m_track.framesPerAccessUnit;

    BoxBuilder start;
    start.box("ftyp", [&] {
        start.text("M4A ");
        start.u32(0);
        start.text("M4A mp42isom");
    });
    // Gives its place to a 64-bit size of the data if need be.
    start.box("free", [] {});
    m_output.write(start.data());
    m_dataStart = m_output.position();
    BoxBuilder data;
    data.box("mdat", [] {});
    m_output.write(data.data());
}

void Mp4Writer::write(std::span<const std::uint8_t> accessUnit)
{
    if (m_track.accessUnitSizes.size() % m_track.accessUnitsPerChunk == 0) {
        m_track.chunkOffsets.push_back(m_output.position());
    }
    m_track.accessUnitSizes.push_back(static_cast<std::uint32_t>(accessUnit.size()));
    m_output.write(accessUnit);
}

void Mp4Writer::finish(std::uint64_t sourceFrames)
{
    m_track.sourceFrames = sourceFrames;
    const std::uint64_t size = m_output.position() - m_dataStart;
    m_output.write(movieBox(m_track));

    BoxBuilder header;
    if (size <= std::numeric_limits<std::uint32_t>::max()) {
        header.u32(size);
        m_output.rewrite(m_dataStart, header.data());
        return;
    }
    constexpr unsigned freeBoxBytes = 8;
    header.u32(1); // the size follows the type
    header.text("mdat");
    header.u64(size + freeBoxBytes);
    m_output.rewrite(m_dataStart - freeBoxBytes, header.data());
}

} // namespace kruv::aacplusenc
