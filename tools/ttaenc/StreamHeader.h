// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/WavFormat.h"

#include <array>
#include <cstdint>
#include <span>

namespace kruv::tools {
class InputStream;
}

namespace kruv::ttaenc {

/// The first 22 bytes of a TTA stream: what the audio is. Frames here are coded frames; a "step" is one
/// sample of every channel.
class StreamHeader
{
public:
    static constexpr std::size_t bytes = 22;

    StreamHeader() = default;
    /// Throws ToolError for what TTA cannot hold.
    StreamHeader(const tools::WavFormat &format, std::uint64_t steps);
    /// Reads and checks the header; ToolError where it is damaged or of an unsupported kind.
    explicit StreamHeader(tools::InputStream &input);

    std::array<std::uint8_t, bytes> toBytes() const;

    const tools::WavFormat &format() const { return m_format; }
    /// Samples per channel.
    std::uint32_t steps() const { return m_steps; }
    /// Steps in each coded frame but a shorter last one: a little more than a second of audio.
    std::uint32_t stepsPerFrame() const;
    std::uint32_t frameCount() const;
    std::uint32_t stepsInFrame(std::uint32_t frame) const;

    static constexpr unsigned largestChannels = 8;
    static constexpr std::uint32_t largestSampleRate = 1'000'000;

private:
    tools::WavFormat m_format;
    std::uint32_t m_steps = 0;
};

} // namespace kruv::ttaenc
