// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace kruv::tools {

class InputStream;

/// Reads an AIFF file, or an AIFF-C file of linear integer PCM (compression types NONE, twos, sowt, in24,
/// in32), in one forward pass.
///
/// A sample chunk of no stated size, or of one larger than what arrives, means "until the end of input".
/// Anything else that does not fit together throws ToolError.
class AiffReader
{
public:
    /// Reads up to the first sample. The stream must outlive the reader.
    explicit AiffReader(InputStream &input);

    std::uint32_t sampleRate() const { return m_sampleRate; }
    unsigned channels() const { return m_channels; }
    /// 1 to 32. Samples lie in whole bytes, shifted to the high end.
    unsigned bitsPerSample() const { return m_bitsPerSample; }
    std::uint32_t bytesPerFrame() const { return (m_bitsPerSample + 7) / 8 * m_channels; }
    /// How the samples lie in the file.
    bool isLittleEndian() const { return m_littleEndian; }
    /// Audio bytes in whole frames as far as they are known beforehand.
    std::optional<std::uint64_t> audioBytes() const { return m_audioBytes; }
    /// Whether the header tells the length, and not the input's end.
    bool statesLength() const { return m_statesLength; }
    /// True when the file states more audio than has arrived at the end.
    bool endedEarly() const { return m_endedEarly; }

    /// Fills @p destination with whole frames of signed little-endian samples; its size must be a multiple of
    /// the frame size. A smaller result is the end of the audio.
    std::size_t readAudio(std::span<std::uint8_t> destination);

private:
    void readChunks(bool compressible);
    void parseCommon(std::span<const std::uint8_t> chunk, bool compressible);
    void parseCompression(std::span<const std::uint8_t> chunk);
    void beginAudio(std::uint32_t chunkSize);
    void reverseSamples(std::span<std::uint8_t> audio) const;

    InputStream &m_input;
    std::uint32_t m_sampleRate = 0;
    unsigned m_channels = 0;
    unsigned m_bitsPerSample = 0;
    std::uint32_t m_statedFrames = 0;
    bool m_littleEndian = false;
    std::optional<std::uint64_t> m_audioBytes;
    std::optional<std::uint64_t> m_remaining; ///< audio bytes to come; nothing = until the end of input
    bool m_statesLength = false;
    bool m_endedEarly = false;
};

} // namespace kruv::tools
