// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmFileReader.h"

#include "audio/AudioError.h"
#include "audio/FileDescriptor.h"
#include "common/ToolError.h"

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
                    .bitsPerChannel = static_cast<std::uint32_t>(pcm.bytesPerSample() * 8),
                    .bytesPerFrame = static_cast<std::uint32_t>(pcm.bytesPerFrame()),
                    .channelMask = pcm.channelMask};
    m_lengthInFrames = static_cast<std::int64_t>(m_pcm.frames().value_or(0));
}

std::size_t PcmFileReader::read(std::span<std::uint8_t> buffer)
{
    try {
        const std::size_t got = m_pcm.read(buffer);
        if (got < buffer.size() && m_pcm.endedEarly()) {
            throw AudioError(QStringLiteral("ExtAudioFileRead failed"),
                             QStringLiteral("The file has less audio than its header states."));
        }
        return got;
    } catch (const tools::ToolError &failure) {
        throw AudioError(QStringLiteral("ExtAudioFileRead failed"), QString::fromUtf8(failure.what()));
    }
}

} // namespace kruv
