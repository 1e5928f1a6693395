// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AacSettings.h"
#include "audio/AudioStreamFormat.h"

#include <cstdint>
#include <span>

namespace kruv {

/// One audio file being written from interleaved linear PCM as ExtAudioFileReader gives it. Every failure is
/// an AudioError.
class ExtAudioFileWriter
{
public:
    virtual ~ExtAudioFileWriter() = default;
    ExtAudioFileWriter(const ExtAudioFileWriter &) = delete;
    ExtAudioFileWriter &operator=(const ExtAudioFileWriter &) = delete;

    /// What write() will be given.
    virtual void setClientFormat(const AudioStreamFormat &format) { m_clientFormat = format; }
    /// For AAC, before the first write.
    virtual void setAacSettings(const AacSettings &) {}
    /// Names the speakers for the codec, as in WAVEFORMATEXTENSIBLE; false where it has no such layout.
    virtual bool setChannelLayout(std::uint32_t) { return false; }
    /// Whole frames of the client format.
    virtual void write(std::span<const std::uint8_t> frames) = 0;
    /// Completes and closes the file. Call once, last.
    virtual void finish() = 0;

protected:
    ExtAudioFileWriter() = default;
    const AudioStreamFormat &clientFormat() const { return m_clientFormat; }
    /// Throws where a call gave -errno.
    static void check(int result);

private:
    AudioStreamFormat m_clientFormat;
};

} // namespace kruv
