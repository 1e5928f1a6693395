// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shorten/BitWriter.h"
#include "shorten/Channel.h"
#include "shorten/SampleType.h"
#include "shorten/StreamHeader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::tools {
class ByteSink;
}

namespace kruv::shorten {

/// Writes a Shorten stream: other bytes and audio in the order in which they come back out.
class Encoder
{
public:
    /// Writes the stream's header. The sink must outlive the encoder.
    Encoder(tools::ByteSink &output, const StreamHeader &header);

    /// Bytes that are kept as they are.
    void putVerbatim(std::span<const std::uint8_t> bytes);
    /// One block of interleaved audio: the header's block size in frames, or fewer for the last one.
    void putBlock(std::span<const std::uint8_t> audio);
    /// Ends the stream.
    void finish();

private:
    void putFunction(Function function);
    std::uint32_t loadChannel(std::span<const std::uint8_t> audio, std::uint32_t index);
    void putChannel(Channel &channel, std::uint32_t usedBits);

    BitWriter m_bits;
    StreamHeader m_header;
    const SampleType &m_type;
    std::vector<Channel> m_channels;
    std::vector<std::int32_t> m_residuals;
    std::uint32_t m_blockSize;
    std::uint32_t m_shift = 0;
};

} // namespace kruv::shorten
