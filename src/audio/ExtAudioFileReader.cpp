// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ExtAudioFileReader.h"

#include "audio/AudioError.h"

#include <QCoreApplication>

namespace kruv {

void ExtAudioFileReader::setClientFormat(const AudioStreamFormat &format)
{
    const std::uint32_t width = format.bitsPerChannel;
    const bool isCut = m_dataFormat.bitsPerChannel != 0 && !m_dataFormat.isFloatingPoint() &&
                       width < m_dataFormat.sampleWidth();
    if (width % 8 != 0 || width < 8 || width > 32 || isCut ||
        format.bytesPerFrame != width / 8 * m_dataFormat.channels) {
        throw AudioError(
            QStringLiteral("ExtAudioFileSetProperty inFile, kExtAudioFileProperty_ClientDataFormat failed"),
            QCoreApplication::translate("kruv::AudioFiles", "Samples of %1 bits can't be converted.")
                .arg(width));
    }
    m_clientFormat = format;
}

} // namespace kruv
