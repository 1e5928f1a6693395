// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <span>

namespace kruv {

/// One audio file, opened and read as interleaved linear PCM: signed integers, low byte first, packed. Every
/// failure is an AudioError.
class ExtAudioFileReader
{
public:
    virtual ~ExtAudioFileReader() = default;
    ExtAudioFileReader(const ExtAudioFileReader &) = delete;
    ExtAudioFileReader &operator=(const ExtAudioFileReader &) = delete;

    /// Opens WAV, RF64, AIFF, AIFF-C and MPEG-4 files, known by their content.
    static std::unique_ptr<ExtAudioFileReader> open(const QString &path);

    const AudioStreamFormat &dataFormat() const { return m_dataFormat; }
    std::int64_t lengthInFrames() const { return m_lengthInFrames; }

    /// What read() is to give. Takes the file's rate and channels, and widths of 8, 16, 24 and 32 bits.
    void setClientFormat(const AudioStreamFormat &format);
    /// Fills `buffer`, a multiple of the client format's frame; fewer bytes only at the end of the audio. A
    /// file that ends before its audio does is a failure.
    virtual std::size_t read(std::span<std::uint8_t> buffer) = 0;
    /// True once samples beyond full scale were cut to what integers hold (floating-point sources only).
    virtual bool hasClipped() const { return false; }

protected:
    ExtAudioFileReader() = default;
    const AudioStreamFormat &clientFormat() const { return m_clientFormat; }

    AudioStreamFormat m_dataFormat;
    std::int64_t m_lengthInFrames = 0;

private:
    AudioStreamFormat m_clientFormat;
};

} // namespace kruv
