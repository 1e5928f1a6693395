// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/ExtAudioFileReader.h"
#include "common/InputStream.h"
#include "common/PcmReader.h"

namespace kruv {

/// Integer PCM in WAV, RF64, AIFF and AIFF-C files. The client format is the file's own, in the signed
/// low-byte-first order of every reader; odd depths lie in the next whole number of bytes.
class PcmFileReader : public ExtAudioFileReader
{
public:
    /// Throws tools::ToolError for what is no integer PCM of this kind, AudioError where the file can't be
    /// opened.
    explicit PcmFileReader(const QString &path);

    std::size_t read(std::span<std::uint8_t> buffer) override;

private:
    tools::InputStream m_input;
    tools::PcmReader m_pcm;
};

} // namespace kruv
