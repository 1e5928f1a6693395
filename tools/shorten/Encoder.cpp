// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/Encoder.h"

#include "common/ByteSink.h"
#include "shorten/Differences.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <numbers>

namespace kruv::shorten {

namespace {

// Longer pieces are refused by some decoders.
constexpr std::size_t longestVerbatim = 256;

template <typename Load>
std::uint32_t loadSamples(const std::uint8_t *in, std::size_t stride, std::uint32_t count, std::int32_t *out,
                          Load load)
{
    std::uint32_t used = 0;
    for (std::uint32_t i = 0; i < count; ++i, in += stride) {
        const std::int32_t sample = load(in);
        out[i] = sample;
        used |= static_cast<std::uint32_t>(sample);
    }
    return used;
}

std::int32_t load16(const std::uint8_t *in)
{
    return static_cast<std::int16_t>(in[0] | in[1] << 8);
}

std::int32_t load8(const std::uint8_t *in)
{
    return *in;
}

// The low bits of the Rice code that suits residuals with this mean size: for a Laplacian distribution the
// logarithm of the mean times ln 2.
unsigned energyBits(std::uint64_t sum, std::uint32_t count)
{
    if (sum == 0) {
        return 0;
    }
    const double mean = std::numbers::ln2 * static_cast<double>(sum) / count;
    return static_cast<unsigned>(std::max(0.0, std::floor(std::log2(mean) + 0.5)));
}

} // namespace

Encoder::Encoder(tools::ByteSink &output, const StreamHeader &header)
    : m_bits(output)
    , m_header(header)
    , m_type(SampleType::byNumber(header.typeNumber))
    , m_channels(header.channels, Channel(header, m_type.centre()))
    , m_residuals(header.blockSize)
    , m_blockSize(header.blockSize)
{
    const std::array<std::uint8_t, 5> start = {'a', 'j', 'k', 'g', static_cast<std::uint8_t>(header.version)};
    output.write(start);
    for (const std::uint32_t value : {header.typeNumber, header.channels, header.blockSize,
                                      header.maxLpcOrder, header.meanBlocks, std::uint32_t(0)}) {
        m_bits.putLong(value);
    }
}

void Encoder::putFunction(Function function)
{
    m_bits.putUnsigned(static_cast<std::uint32_t>(function), width::function);
}

void Encoder::putVerbatim(std::span<const std::uint8_t> bytes)
{
    while (!bytes.empty()) {
        const auto piece = bytes.first(std::min(bytes.size(), longestVerbatim));
        putFunction(Function::Verbatim);
        m_bits.putUnsigned(static_cast<std::uint32_t>(piece.size()), width::verbatimLength);
        for (const std::uint8_t byte : piece) {
            m_bits.putUnsigned(byte, width::verbatimByte);
        }
        bytes = bytes.subspan(piece.size());
    }
}

std::uint32_t Encoder::loadChannel(std::span<const std::uint8_t> audio, std::uint32_t index)
{
    const std::size_t stride = std::size_t(m_type.bytes) * m_header.channels;
    const std::uint8_t *in = audio.data() + std::size_t(index) * m_type.bytes;
    std::int32_t *out = m_channels[index].samples();
    return m_type.bytes == 1 ? loadSamples(in, stride, m_blockSize, out, load8)
                             : loadSamples(in, stride, m_blockSize, out, load16);
}

void Encoder::putBlock(std::span<const std::uint8_t> audio)
{
    const auto frames =
        static_cast<std::uint32_t>(audio.size() / (std::size_t(m_type.bytes) * m_header.channels));
    if (frames != m_blockSize) {
        putFunction(Function::BlockSize);
        m_bits.putLong(frames);
        m_blockSize = frames;
    }
    for (std::uint32_t c = 0; c < m_header.channels; ++c) {
        putChannel(m_channels[c], loadChannel(audio, c));
    }
}

// usedBits has every bit set that any sample of the block has; its lowest zeros need not be coded.
void Encoder::putChannel(Channel &channel, std::uint32_t usedBits)
{
    if (usedBits == 0) {
        putFunction(Function::Zero);
        channel.finishBlock(m_blockSize, m_shift);
        return;
    }
    std::int32_t *samples = channel.samples();
    const auto shift = static_cast<std::uint32_t>(std::countr_zero(usedBits));
    if (shift != m_shift) {
        putFunction(Function::BitShift);
        m_bits.putUnsigned(shift, width::bitShift);
        m_shift = shift;
    }
    if (shift > 0) {
        std::for_each(samples, samples + m_blockSize, [shift](std::int32_t &sample) { sample >>= shift; });
    }
    const std::int32_t offset = channel.offset(m_shift);
    const auto sums = differenceSums(samples, m_blockSize, offset);
    unsigned order = 0;
    for (unsigned i = 1; i < sums.size(); ++i) {
        if (sums[i] <= sums[order]) {
            order = i;
        }
    }
    const unsigned k = energyBits(sums[order], m_blockSize);
    const auto residuals = std::span(m_residuals).first(m_blockSize);
    differences(samples, order, offset, residuals);
    putFunction(static_cast<Function>(order));
    m_bits.putUnsigned(k, width::energy);
    m_bits.putSigned(residuals, k);
    channel.finishBlock(m_blockSize, m_shift);
}

void Encoder::finish()
{
    putFunction(Function::Quit);
    m_bits.finish();
}

} // namespace kruv::shorten
