// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/PcmFileReader.h"

#include "audio/AudioError.h"
#include "audio/FileDescriptor.h"
#include "base/HeldWork.h"
#include "common/ToolError.h"

#include <algorithm>

namespace kruv {

PcmFileReader::PcmFileReader(const QString &path)
    : PcmFileReader(std::make_unique<tools::InputStream>(FileDescriptor::openForReading(path).release(),
                                                         path.toStdString()),
                    FormatType::LinearPcm)
{
}

PcmFileReader::PcmFileReader(std::unique_ptr<tools::InputStream> input, FormatType formatType)
    : m_input(std::move(input))
    , m_pcm(*m_input)
{
    const tools::PcmFormat &pcm = m_pcm.format();
    const std::uint32_t flags = AudioStreamFormat::isSignedInteger | AudioStreamFormat::isPacked |
                                (m_pcm.isBigEndian() ? AudioStreamFormat::isBigEndian : 0);
    m_dataFormat = {.formatType = formatType,
                    .formatFlags = formatType == FormatType::LinearPcm ? flags : 0,
                    .sampleRate = pcm.sampleRate,
                    .channels = pcm.channels,
                    .bitsPerChannel = pcm.bitsPerSample,
                    .bytesPerFrame = static_cast<std::uint32_t>(pcm.bytesPerFrame()),
                    .channelMask = pcm.channelMask};
    m_lengthInFrames = static_cast<std::int64_t>(m_pcm.frames().value_or(0));
}

ExtAudioFileReader::Length PcmFileReader::length() const
{
    return m_pcm.endedEarly() ? Length::TooMuch : m_pcm.statesLength() ? Length::Told : Length::LeftOpen;
}

std::size_t PcmFileReader::read(std::span<std::uint8_t> buffer)
{
    HeldWork::wait();
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
        if (got < buffer.size()) {
            checkEnd();
        }
        return got;
    } catch (const tools::ToolError &failure) {
        throw AudioError(QStringLiteral("ExtAudioFileRead failed"), QString::fromUtf8(failure.what()));
    }
}

void PcmFileReader::checkEnd()
{
    if (m_pcm.endedEarly()) {
        throw AudioError(QStringLiteral("ExtAudioFileRead failed"),
                         tr("The file has less audio than its header states."));
    }
    // A coder knows at the end of its stream only that nothing is wrong with it.
    while (m_dataFormat.formatType != FormatType::LinearPcm && !m_input->readBlock().empty()) {
    }
}

} // namespace kruv
