// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
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

    const AudioStreamFormat &dataFormat() const { return m_dataFormat; }
    /// What the file announces, without what its codec puts before and behind the audio; 0 where it does not
    /// tell.
    std::int64_t lengthInFrames() const { return m_lengthInFrames; }

    /// What the header of PCM tells of the length, as far as it is known without reading the audio.
    enum class Length {
        Told,
        LeftOpen, ///< by a writer that did not get to its end; the audio goes on to the file's
        TooMuch   ///< the file was cut short
    };
    virtual Length length() const { return Length::Told; }

    /// What read() is to give. Takes the file's rate and channels, and widths of 8, 16, 24 and 32 bits; of
    /// integers none below the file's own, and wider samples have theirs at the high end, zeros below: asked
    /// for 32 bits, two files of whatever depths can be compared. Floating point and lossy audio is rounded
    /// to 16 bits; to wider ones it is cut after the last bit.
    void setClientFormat(const AudioStreamFormat &format);
    const AudioStreamFormat &clientFormat() const { return m_clientFormat; }
    /// Fills `buffer`, a multiple of the client format's frame; fewer bytes only at the end of the audio.
    /// What a decoder complains of, a checksum that does not hold, and a file that ends before its audio does
    /// are failures; what was read before them is to be thrown away.
    virtual std::size_t read(std::span<std::uint8_t> buffer) = 0;
    /// True once samples beyond full scale were cut to what integers hold (lossless floating point only).
    virtual bool hasClipped() const { return false; }
    /// The MD5 of all samples as FLAC keeps it, where the file holds one; read() checks it at the end.
    virtual QByteArray statedDigest() const { return {}; }
    /// What decodes it, as reports name it: "ffmpeg/flac".
    virtual QString decoder() const = 0;

protected:
    ExtAudioFileReader() = default;

    AudioStreamFormat m_dataFormat;
    std::int64_t m_lengthInFrames = 0;

private:
    AudioStreamFormat m_clientFormat;
};

} // namespace kruv
