// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmFileReader.h"

#include "audio/AudioError.h"
#include "audio/FileDescriptor.h"
#include "common/ToolError.h"

#include <algorithm>

namespace kruv {

PcmFileReader::PcmFileReader(const QString &path)
    : m_input(FileDescriptor::openForReading(path).release(), path.toStdString())
    , m_pcm(m_input)
{
    const tools::PcmFormat &pcm = m_pcm.format();
    const bool bigEndian = m_pcm.isBigEndian();
    m_dataFormat = {.formatType = FormatType::LinearPcm,
                    .formatFlags = AudioStreamFormat::isSignedInteger | AudioStreamFormat::isPacked |
                                   (bigEndian ? AudioStreamFormat::isBigEndian : 0),
                    .sampleRate = pcm.sampleRate,
                    .channels = pcm.channels,
                    .bitsPerChannel = pcm.bitsPerSample,
                    .bytesPerFrame = static_cast<std::uint32_t>(pcm.bytesPerFrame()),
                    .channelMask = pcm.channelMask};
    m_lengthInFrames = static_cast<std::int64_t>(m_pcm.frames().value_or(0));
}

std::size_t PcmFileReader::read(std::span<std::uint8_t> buffer)
{
    return clientFormat().bytesPerFrame == m_dataFormat.bytesPerFrame ? readNarrow(buffer)
                                                                      : readWidened(buffer);
}

std::size_t PcmFileReader::readWidened(std::span<std::uint8_t> buffer)
{
    const std::size_t wide = clientFormat().bitsPerChannel / 8;
    const std::size_t narrow = m_pcm.format().bytesPerSample();
    m_narrow.resize(buffer.size() / wide * narrow);
    const std::size_t samples = readNarrow(m_narrow) / narrow;
    std::fill_n(buffer.begin(), samples * wide, std::uint8_t{0});
    for (std::size_t i = 0; i < samples; ++i) {
        std::copy_n(&m_narrow[i * narrow], narrow, &buffer[i * wide + (wide - narrow)]);
    }
    return samples * wide;
}

std::size_t PcmFileReader::readNarrow(std::span<std::uint8_t> buffer)
{
    try {
        const std::size_t got = m_pcm.read(buffer);
        if (got < buffer.size() && m_pcm.endedEarly()) {
            throw AudioError(QStringLiteral("ExtAudioFileRead failed"),
                             tr("The file has less audio than its header states."));
        }
        return got;
    } catch (const tools::ToolError &failure) {
        throw AudioError(QStringLiteral("ExtAudioFileRead failed"), QString::fromUtf8(failure.what()));
    }
}

} // namespace kruv
