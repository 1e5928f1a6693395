// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace kruv::tools {
class InputStream;
}

namespace kruv::ttaenc {

struct ChannelRice;

/// Reads coded frames, low bit first, and checks their checksums. Its memory does not depend on the frames'
/// sizes.
class BitReader
{
public:
    /// Takes the input from its present position, the first frame, on; the stream must outlive the reader.
    explicit BitReader(tools::InputStream &input);

    /// Reads one frame into residuals, interleaved by channel. size is the frame's length with its checksum
    /// where it is known. FrameDamage when the bits, the size and the checksum do not agree: with a size
    /// given the reader stands at the next frame all the same. ToolError when the input ends before the frame
    /// does.
    void readFrame(std::span<std::int32_t> residuals, unsigned channels, std::optional<std::uint32_t> size);

private:
    template <unsigned Channels> void readResiduals(std::span<std::int32_t> residuals, unsigned channels);
    std::uint32_t readValue(ChannelRice &state);
    void readChecked(std::span<std::int32_t> residuals, unsigned channels);
    std::uint32_t readOnes();
    void refill();
    std::uint64_t window() const;
    void checkEnd() const;
    void addToChecksum(std::size_t end);
    void leaveFrame();

    tools::InputStream &m_input;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_validBytes = 0;
    std::size_t m_bitPosition = 0;  ///< of the next bit in m_buffer
    std::size_t m_checkedBytes = 0; ///< of m_buffer are in the checksum or belong to no frame
    std::uint32_t m_checksum = 0;
    std::uint64_t m_bufferOffset = 0;        ///< of m_buffer in the input from the first frame on
    std::optional<std::uint64_t> m_frameEnd; ///< offset of the frame's checksum, where known
    bool m_inputEnded = false;
};

} // namespace kruv::ttaenc
