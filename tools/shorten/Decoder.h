// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shorten/BitReader.h"
#include "shorten/Channel.h"
#include "shorten/SampleType.h"
#include "shorten/StreamHeader.h"

#include <cstdint>
#include <vector>

namespace kruv::tools {
class ByteSink;
class InputStream;
} // namespace kruv::tools

namespace kruv::shorten {

/// Decodes a Shorten stream of version 1 to 3 and linear PCM. The result is what the encoder was given:
/// normally a whole WAV file, header and trailing chunks included. A seek table behind the stream is ignored.
class Decoder
{
public:
    /// Reads the stream's header; both streams must outlive the decoder.
    Decoder(tools::InputStream &input, tools::ByteSink &output);

    const StreamHeader &header() const { return m_header; }
    /// Decodes the next piece of the stream, a block of one channel for example; false when that was its end.
    /// ToolError where the stream is damaged or ends early; whole blocks before that are written.
    bool step();
    /// Decodes to the end.
    void run();

private:
    static StreamHeader readHeader(tools::InputStream &input, BitReader &bits);
    void copyBytes(std::uint32_t count, unsigned k);
    void changeBlockSize();
    void changeShift();
    void decodeBlock(Function function);
    void addDifferences(unsigned order, std::int32_t offset);
    void predictLinearly(unsigned energyBits, std::int32_t offset);
    void storeBlock();
    [[noreturn]] void damaged(const char *what) const;

    tools::InputStream &m_input;
    tools::ByteSink &m_output;
    BitReader m_bits;
    StreamHeader m_header;
    const SampleType &m_type;
    std::vector<Channel> m_channels;
    std::uint32_t m_blockSize;
    std::uint32_t m_shift = 0;
    std::uint32_t m_channel = 0; ///< whose block comes next
    bool m_atStart = true;
    std::vector<std::uint8_t> m_bytes; ///< the present block, interleaved
};

} // namespace kruv::shorten
