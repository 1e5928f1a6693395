// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/PcmReader.h"

#include "common/InputStream.h"
#include "common/ToolError.h"

#include <cstring>

namespace kruv::tools {

PcmReader::PcmReader(InputStream &input)
{
    const auto start = input.peek(4);
    if (start.size() == 4 && std::memcmp(start.data(), "FORM", 4) == 0) {
        m_aiff.emplace(input);
        m_format = {m_aiff->sampleRate(), m_aiff->channels(), m_aiff->bitsPerSample(), 0};
    } else if (WavReader::isWav(input)) {
        m_wav.emplace(input, WavTolerance::Repair);
        const WavFormat &format = m_wav->format();
        m_format = {format.sampleRate, format.channels, format.bitsPerSample, format.channelMask};
    } else {
        throw ToolError(input.name() + " is neither a WAV nor an AIFF file");
    }
}

std::optional<std::uint64_t> PcmReader::frames() const
{
    const auto bytes = m_wav ? m_wav->audioBytes() : m_aiff->audioBytes();
    if (!bytes) {
        return {};
    }
    return *bytes / m_format.bytesPerFrame();
}

std::size_t PcmReader::read(std::span<std::uint8_t> destination)
{
    if (m_aiff) {
        return m_aiff->readAudio(destination);
    }
    const std::size_t got = m_wav->readAudio(destination);
    if (m_format.bytesPerSample() == 1) {
        // Only WAV's bytes are unsigned.
        for (std::uint8_t &sample : destination.first(got)) {
            sample ^= 0x80;
        }
    }
    return got;
}

} // namespace kruv::tools
