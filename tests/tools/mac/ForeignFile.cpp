// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ForeignFile.h"

#include "common/Crc32.h"
#include "common/LittleEndian.h"
#include "common/MemorySink.h"
#include "mac/ChannelCoder.h"
#include "mac/FileLayout.h"
#include "mac/FramePacker.h"
#include "mac/RangeEncoder.h"
#include "mac/ResidualEncoder.h"
#include "mac/SampleFormat.h"

#include <bit>

namespace kruv::mac::test {

namespace {

/// The code of residuals before version 3.99.
class HighBitsEncoder
{
public:
    void put(RangeEncoder &coder, int32_t residual)
    {
        const uint32_t folded = fold(residual);
        int bits = std::max(m_bits - 1, 0);
        if (folded >> bits < SymbolTable::escape) {
            const uint32_t symbol = folded >> bits;
            coder.putSymbol(highBitsTable.start(symbol), highBitsTable.width(symbol));
        } else {
            coder.putSymbol(highBitsTable.start(SymbolTable::escape),
                            highBitsTable.width(SymbolTable::escape));
            bits = std::bit_width(folded);
            coder.putBits(static_cast<uint32_t>(bits), 5);
        }
        const uint32_t low = folded & ((uint32_t{1} << bits) - 1);
        coder.putBits(low & 0xFFFF, std::min(bits, 16));
        if (bits > 16) {
            coder.putBits(low >> 16, bits - 16);
        }
        m_mean.update(folded);
        if (m_bits > 0 && m_mean.sum() < 1U << (m_bits + 4)) {
            --m_bits;
        } else if (m_mean.sum() >= 1U << (m_bits + 5)) {
            ++m_bits;
        }
    }

private:
    ResidualMean m_mean;
    int m_bits = 10;
};

template <typename Residuals>
void codeBlocks(ChannelCoder &midCoder, ChannelCoder &sideCoder, Arithmetic arithmetic, Format format,
                const Bytes &audio, Bytes &output)
{
    RangeEncoder range(output);
    Residuals mids;
    Residuals sides;
    int32_t previousMid = 0;
    const auto load = [&](std::size_t at) {
        return format.bits == 16 ? SampleFormat<16>::load(&audio[at]) : SampleFormat<24>::load(&audio[at]);
    };
    for (std::size_t at = 0; at < audio.size(); at += format.blockBytes()) {
        const int32_t first = load(at);
        const int32_t side = load(at + format.bits / 8) - first;
        const int32_t mid = first + side / 2;
        sides.put(range, sideCoder.encode(side, previousMid, arithmetic));
        mids.put(range, midCoder.encode(mid, side, arithmetic));
        previousMid = mid;
    }
    range.finish();
}

} // namespace

Bytes ForeignFile::codeFrame(Format format, const Bytes &audio) const
{
    const auto filters = findLevel(level)->filters;
    ChannelCoder midCoder(filters, version, fastestKernel());
    ChannelCoder sideCoder(filters, version, fastestKernel());
    Bytes frame;
    const uint32_t checksum = tools::crc32(audio) >> 1;
    for (int shift = 24; shift >= 0; shift -= 8) {
        frame.push_back(static_cast<uint8_t>(checksum >> shift));
    }
    if (version >= 3990) {
        codeBlocks<ResidualEncoder>(midCoder, sideCoder, arithmetic, format, audio, frame);
    } else {
        codeBlocks<HighBitsEncoder>(midCoder, sideCoder, arithmetic, format, audio, frame);
    }
    return frame;
}

Bytes ForeignFile::oldHeader(Format format, uint32_t blocks) const
{
    Bytes header = bytesOf("MAC ");
    header.resize(32);
    tools::writeLe16(&header[4], version);
    tools::writeLe16(&header[6], level);
    tools::writeLe16(&header[8], 2U | flagNoWavHeader | (format.bits == 24 ? flag24Bit : 0U) |
                                     (withPeakLevel ? flagPeakLevel : 0U) |
                                     (withSeekElements ? flagSeekElements : 0U));
    tools::writeLe16(&header[10], format.channels);
    tools::writeLe32(&header[12], 44100);
    tools::writeLe32(&header[24], 1);
    tools::writeLe32(&header[28], blocks);
    const std::size_t elements = withSeekElements ? 3 : 1;
    if (withPeakLevel) {
        header.resize(header.size() + 4, 0x55);
    }
    if (withSeekElements) {
        header.resize(header.size() + 4);
        tools::writeLe32(&header[header.size() - 4], static_cast<uint32_t>(elements));
    }
    const std::size_t table = header.size();
    header.resize(table + 4 * elements);
    tools::writeLe32(&header[table], static_cast<uint32_t>(header.size()));
    return header;
}

Bytes ForeignFile::currentHeader(Format format, uint32_t blocks, std::size_t frameDataSize) const
{
    Descriptor descriptor;
    descriptor.version = version;
    descriptor.seekTableSize = 4;
    descriptor.frameDataSize = frameDataSize;
    StreamInfo info;
    info.level = level;
    info.flags = flagNoWavHeader;
    info.bitsPerSample = static_cast<uint16_t>(format.bits);
    info.channels = static_cast<uint16_t>(format.channels);
    info.sampleRate = 44100;
    info.blocksPerFrame = findLevel(level)->blocksPerFrame;
    info.finalFrameBlocks = blocks;
    info.totalFrames = 1;
    const auto first = descriptor.serialise();
    const auto second = serialiseHeader(info);
    Bytes header(first.size() + second.size() + 4);
    std::copy(second.begin(), second.end(), std::copy(first.begin(), first.end(), header.begin()));
    tools::writeLe32(&header[first.size() + second.size()], static_cast<uint32_t>(header.size()));
    return header;
}

Bytes ForeignFile::make(Format format, const Bytes &audio) const
{
    tools::MemorySink sink;
    FramePacker packer(sink);
    packer.add(codeFrame(format, audio));
    packer.finish();
    const auto blocks = static_cast<uint32_t>(audio.size() / format.blockBytes());
    return (version < versionDescriptor ? oldHeader(format, blocks)
                                        : currentHeader(format, blocks, sink.bytes().size())) +
           sink.bytes();
}

} // namespace kruv::mac::test
