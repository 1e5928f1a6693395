// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ExtAudioFileReader.h"

#include "audio/AudioError.h"
#include "audio/CodecFileReader.h"
#include "audio/PcmFileReader.h"
#include "common/ToolError.h"

namespace kruv {

std::unique_ptr<ExtAudioFileReader> ExtAudioFileReader::open(const QString &path)
{
    // Plain PCM goes past FFmpeg: it would look into the samples and take DTS on a CD track for a film's
    // sound.
    try {
        return std::make_unique<PcmFileReader>(path);
    } catch (const tools::ToolError &notPcm) {
        return std::make_unique<CodecFileReader>(path, QString::fromUtf8(notPcm.what()));
    }
}

void ExtAudioFileReader::setClientFormat(const AudioStreamFormat &format)
{
    const std::uint32_t width = format.bitsPerChannel;
    if (width % 8 != 0 || width < 8 || width > 32 ||
        format.bytesPerFrame != width / 8 * m_dataFormat.channels) {
        throw AudioError(
            QStringLiteral("ExtAudioFileSetProperty inFile, kExtAudioFileProperty_ClientDataFormat failed"),
            QStringLiteral("Samples of %1 bits can't be converted.").arg(width));
    }
    m_clientFormat = format;
}

} // namespace kruv
