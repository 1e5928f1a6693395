// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TrackSource.h"

#include "common/ToolError.h"

#include <cstring>

namespace kruv::dvda {
namespace {

constexpr std::size_t framesPerRead = std::size_t{16} * 1024;

bool isFlac(tools::InputStream &file)
{
    const auto start = file.peek(4);
    // Some programs put an ID3 tag in front, which flac skips.
    return start.size() == 4 &&
           (std::memcmp(start.data(), "fLaC", 4) == 0 || std::memcmp(start.data(), "ID3", 3) == 0);
}

} // namespace

TrackSource::TrackSource(const std::string &path)
    : m_file(std::make_unique<tools::InputStream>(path))
{
    if (isFlac(*m_file)) {
        m_file.reset();
        m_flac = std::make_unique<FlacDecoder>(path);
    }
    tools::InputStream &stream = m_flac ? m_flac->output() : *m_file;
    if (m_flac && stream.peek(1).empty()) {
        m_flac->finish();
    }
    m_reader.emplace(stream);
    const tools::PcmFormat &pcm = m_reader->format();
    try {
        m_format = lpcmFormat(pcm.sampleRate, pcm.bitsPerSample, pcm.channels, pcm.channelMask);
    } catch (const tools::ToolError &error) {
        throw tools::ToolError(path + ": " + error.what());
    }
}

std::span<const std::uint8_t> TrackSource::read()
{
    m_raw.resize(framesPerRead * m_reader->format().bytesPerFrame());
    const auto audio = std::span<const std::uint8_t>(m_raw).first(m_reader->read(m_raw));
    if (m_reader->format().bytesPerSample() == m_format.bytesPerSample()) {
        return audio;
    }
    m_widened.assign(2 * audio.size(), 0);
    for (std::size_t i = 0; i < audio.size(); ++i) {
        m_widened[2 * i + 1] = audio[i];
    }
    return m_widened;
}

bool TrackSource::finish()
{
    if (m_flac) {
        m_flac->finish();
    }
    return m_reader->endedEarly();
}

} // namespace kruv::dvda
