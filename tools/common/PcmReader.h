// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/AiffReader.h"
#include "common/WavReader.h"

#include <cstdint>
#include <optional>
#include <span>

namespace kruv::tools {

class InputStream;

struct PcmFormat
{
    std::uint32_t sampleRate = 0;
    unsigned channels = 0;
    unsigned bitsPerSample = 0;    ///< 1 to 32
    std::uint32_t channelMask = 0; ///< speakers as in WAVEFORMATEXTENSIBLE; 0 = not told

    std::size_t bytesPerSample() const { return (bitsPerSample + 7) / 8; }
    std::size_t bytesPerFrame() const { return bytesPerSample() * channels; }
};

/// The audio of a WAV (RIFF, RF64, BW64, Wave64) or AIFF (AIFF, AIFF-C) stream of integer PCM as one kind of
/// samples: signed, low byte first, shifted to the high end of whole bytes. The content decides which kind of
/// file it is.
class PcmReader
{
public:
    /// Reads up to the first sample; throws ToolError for anything that is not integer PCM in one of these
    /// files. The stream must outlive the reader.
    explicit PcmReader(InputStream &input);

    const PcmFormat &format() const { return m_format; }
    /// Length in frames as far as it is known beforehand; fewer may come.
    std::optional<std::uint64_t> frames() const;
    /// Whether the file's header tells the length; else the audio goes on to the file's end.
    bool statesLength() const { return m_wav ? m_wav->statesLength() : m_aiff->statesLength(); }
    /// True for AIFF files that are not of the "sowt" kind: in the file, samples have their high byte first.
    bool isBigEndian() const { return m_aiff && !m_aiff->isLittleEndian(); }
    /// True when the file states more audio than has arrived at the end (a file cut short).
    bool endedEarly() const { return m_wav ? m_wav->endedEarly() : m_aiff->endedEarly(); }

    /// Fills @p destination with whole frames; its size must be a multiple of the frame size. A smaller
    /// result is the end.
    std::size_t read(std::span<std::uint8_t> destination);

private:
    PcmFormat m_format;
    std::optional<WavReader> m_wav; ///< exactly one of the two is there
    std::optional<AiffReader> m_aiff;
};

} // namespace kruv::tools
