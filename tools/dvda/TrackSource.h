// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FlacDecoder.h"
#include "LpcmFormat.h"
#include "common/PcmReader.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kruv::dvda {

/// The audio of one input file (WAV, AIFF or FLAC, by its content) as it goes into a track.
class TrackSource
{
public:
    /// Throws ToolError, naming the file, when it cannot be read or a disc cannot hold its format.
    explicit TrackSource(const std::string &path);

    const LpcmFormat &format() const { return m_format; }
    /// Length in frames as far as it is known beforehand.
    std::optional<std::uint64_t> frames() const { return m_reader->frames(); }

    /// The next frames: little-endian signed samples of format()'s size, interleaved. Empty at the end; valid
    /// until the next call.
    std::span<const std::uint8_t> read();
    /// Call at the end. Throws ToolError when a FLAC file turned out to be damaged; returns whether the file
    /// has less audio than it states.
    bool finish();

private:
    std::unique_ptr<tools::InputStream> m_file;
    std::unique_ptr<FlacDecoder> m_flac;
    std::optional<tools::PcmReader> m_reader;
    LpcmFormat m_format;
    std::vector<std::uint8_t> m_raw;
    std::vector<std::uint8_t> m_widened; ///< 8-bit audio as 16-bit samples
};

} // namespace kruv::dvda
