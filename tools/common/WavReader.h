// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/WavFormat.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kruv::tools {

class InputStream;

/// What a WavReader takes besides faultless files.
enum class WavTolerance {
    None,
    /// Frame sizes that contradict channels and depth; these two decide.
    Repair,
};

/// Reads a WAV file of linear PCM (RIFF, or RF64, BW64 and Wave64 with their sizes of 64 bits) in one forward
/// pass, so it works on a pipe, and loses no byte: header() + readAudio() until 0 + readTrailing() until 0 is
/// the input.
///
/// A data size of 0, of 0xFFFFFFFF, or larger than what arrives, as writers on a pipe leave it, means "until
/// the end of input". Anything but PCM, and chunks that do not fit together, throw ToolError.
class WavReader
{
public:
    /// Reads up to the first sample. The stream must outlive the reader.
    explicit WavReader(InputStream &input, WavTolerance tolerance = WavTolerance::None);

    /// Whether the input, at its start, is of one of these kinds.
    static bool isWav(InputStream &input);

    const WavFormat &format() const { return m_format; }
    /// False for the kinds with sizes of 64 bits, whose header and trailing chunks stand in no RIFF file.
    bool isRiff() const { return m_kind == Kind::Riff; }
    /// Every byte before the first sample.
    const std::vector<std::uint8_t> &header() const { return m_header; }
    /// Audio bytes in whole frames as far as they are known beforehand; a pipe or a file cut short may have
    /// fewer.
    std::optional<std::uint64_t> audioBytes() const { return m_audioBytes; }
    /// Whether the header tells the length, and not the input's end.
    bool statesLength() const { return m_statesLength; }
    /// True when the header states more audio than has arrived at the end (a file cut short).
    bool endedEarly() const { return m_endedEarly; }

    /// Fills destination with audio, whole frames only (destination.size() must be a multiple of the frame
    /// size); a smaller result is the end of the audio.
    std::size_t readAudio(std::span<std::uint8_t> destination);
    /// What follows the audio: an incomplete frame, the pad byte, further chunks. Only after the audio's end.
    std::size_t readTrailing(std::span<std::uint8_t> destination);

private:
    enum class Kind { Riff, Wide, Wave64 };

    static std::optional<Kind> kindOf(InputStream &input);
    static Kind kindOrRefusal(InputStream &input);
    void readChunks();
    void readWave64Chunks();
    void skipPadding(std::uint64_t chunkSize);
    void parseFormat(std::span<const std::uint8_t> chunk);
    void parseWideSizes(std::span<const std::uint8_t> chunk);
    void decideLength(std::uint64_t stated, bool placeholder);
    bool emptyDataIsMeant() const;
    std::size_t append(std::size_t count, const char *what);

    InputStream &m_input;
    const WavTolerance m_tolerance;
    const Kind m_kind;
    std::uint64_t m_wideDataSize = 0; ///< of Kind::Wide; 0 = not told
    WavFormat m_format;
    std::vector<std::uint8_t> m_header;
    std::optional<std::uint64_t> m_audioBytes;
    std::optional<std::uint64_t> m_remaining; ///< audio bytes to come; nothing = until the end of input
    bool m_hasFormat = false;
    bool m_statesLength = false;
    bool m_endedEarly = false;
    std::vector<std::uint8_t> m_partialFrame;
};

} // namespace kruv::tools
