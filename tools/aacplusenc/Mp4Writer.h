// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "MovieBox.h"

#include <cstdint>
#include <span>

namespace kruv::tools {
class OutputFile;
}

namespace kruv::aacplusenc {

/// Writes an .m4a file with one AAC track: the access units as they come, the movie box behind them. Memory
/// grows by four bytes an access unit.
class Mp4Writer
{
public:
    /// @p track has everything but the access units and the length. @p output must outlive the writer and
    /// support rewriting.
    Mp4Writer(tools::OutputFile &output, AacTrack track);

    void write(std::span<const std::uint8_t> accessUnit);
    /// Completes the file's content; the caller commits it. Access units that are not needed for delay and
    /// source must not have been written.
    void finish(std::uint64_t sourceFrames);

private:
    tools::OutputFile &m_output;
    AacTrack m_track;
    std::uint64_t m_dataStart = 0; ///< position of the media data box
};

} // namespace kruv::aacplusenc
