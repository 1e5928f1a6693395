// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "shorten/Decoder.h"

#include "common/ByteSink.h"
#include "common/InputStream.h"
#include "common/ToolError.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

namespace kruv::shorten {

using tools::ToolError;

namespace {

// Arithmetic that wraps: only damaged streams get there, and they must not get further.
std::int32_t wrap(std::uint32_t value)
{
    return static_cast<std::int32_t>(value);
}

std::uint32_t bitsOf(std::int32_t value)
{
    return static_cast<std::uint32_t>(value);
}

// Interleaves one channel into the block's bytes.
void storeChannel(const std::int32_t *samples, std::uint32_t count, std::uint32_t shift,
                  const SampleType &type, std::size_t stride, std::uint8_t *out)
{
    const std::int32_t smallest = type.smallest();
    const std::int32_t largest = type.largest();
    const auto value = [=](std::uint32_t i) {
        return std::clamp(wrap(bitsOf(samples[i]) << shift), smallest, largest);
    };
    if (type.bytes == 1) {
        for (std::uint32_t i = 0; i < count; ++i, out += stride) {
            *out = static_cast<std::uint8_t>(value(i));
        }
        return;
    }
    const unsigned lowAt = type.highByteFirst ? 1 : 0;
    for (std::uint32_t i = 0; i < count; ++i, out += stride) {
        const auto bits = bitsOf(value(i));
        out[lowAt] = static_cast<std::uint8_t>(bits);
        out[1 - lowAt] = static_cast<std::uint8_t>(bits >> 8);
    }
}

} // namespace

Decoder::Decoder(tools::InputStream &input, tools::ByteSink &output)
    : m_input(input)
    , m_output(output)
    , m_bits(input)
    , m_header(readHeader(input, m_bits))
    , m_type(SampleType::byNumber(m_header.typeNumber))
    , m_channels(m_header.channels, Channel(m_header, m_type.centre()))
    , m_blockSize(m_header.blockSize)
{
}

StreamHeader Decoder::readHeader(tools::InputStream &input, BitReader &bits)
{
    const auto limited = [&](std::uint32_t value, std::uint32_t low, std::uint32_t high, const char *what) {
        if (value < low || value > high) {
            throw ToolError(input.name() + ": " + what + " of " + std::to_string(value) +
                            " is not supported");
        }
        return value;
    };
    std::array<std::uint8_t, 5> start = {};
    if (input.read(start) != start.size() || std::memcmp(start.data(), "ajkg", 4) != 0) {
        throw ToolError(input.name() + " is not a Shorten file");
    }
    StreamHeader header;
    header.version = limited(start[4], 1, 3, "a format version");
    header.typeNumber = bits.readLong();
    header.channels = limited(bits.readLong(), 1, largestChannels, "a channel count");
    header.blockSize = limited(bits.readLong(), 1, largestBlock, "a block size");
    header.maxLpcOrder = limited(bits.readLong(), 0, largestLpcOrder, "a prediction order");
    header.meanBlocks = limited(bits.readLong(), 0, largestMeanBlocks, "a mean over blocks");
    return header;
}

void Decoder::damaged(const char *what) const
{
    throw ToolError(m_input.name() + " is damaged: " + what);
}

void Decoder::run()
{
    while (step()) {
    }
}

bool Decoder::step()
{
    if (std::exchange(m_atStart, false)) {
        copyBytes(m_bits.readLong(), width::skippedByte);
        return true;
    }
    const auto function = static_cast<Function>(m_bits.readUnsigned(width::function));
    switch (function) {
    case Function::Quit:
        if (m_channel != 0) {
            damaged("it ends between two channels");
        }
        return false;
    case Function::BlockSize:
        changeBlockSize();
        break;
    case Function::BitShift:
        changeShift();
        break;
    case Function::Verbatim:
        copyBytes(m_bits.readUnsigned(width::verbatimLength), width::verbatimByte);
        break;
    default:
        decodeBlock(function);
    }
    return true;
}

void Decoder::copyBytes(std::uint32_t count, unsigned k)
{
    std::array<std::uint8_t, 256> bytes = {};
    while (count > 0) {
        const std::size_t step = std::min<std::size_t>(count, bytes.size());
        for (std::size_t i = 0; i < step; ++i) {
            bytes[i] = static_cast<std::uint8_t>(m_bits.readUnsigned(k));
        }
        m_output.write(std::span(bytes).first(step));
        count -= static_cast<std::uint32_t>(step);
    }
}

void Decoder::changeBlockSize()
{
    const std::uint32_t size = m_bits.readLong();
    if (size == 0 || size > largestBlock || m_channel != 0) {
        damaged("impossible block size");
    }
    m_blockSize = size;
    for (Channel &channel : m_channels) {
        channel.setBlockSize(size);
    }
}

void Decoder::changeShift()
{
    m_shift = m_bits.readUnsigned(width::bitShift);
    if (m_shift > largestShift) {
        damaged("impossible bit shift");
    }
}

void Decoder::decodeBlock(Function function)
{
    Channel &channel = m_channels[m_channel];
    const std::span<std::int32_t> samples(channel.samples(), m_blockSize);
    if (function == Function::Zero) {
        std::fill(samples.begin(), samples.end(), 0);
    } else if (function <= Function::Diff3 || function == Function::Qlpc) {
        const std::uint32_t energyBits = m_bits.readUnsigned(width::energy);
        if (energyBits > 31) {
            damaged("impossible code width");
        }
        const std::int32_t offset = channel.offset(m_shift);
        if (function == Function::Qlpc) {
            predictLinearly(energyBits, offset);
        } else {
            m_bits.readSigned(energyBits, samples);
            addDifferences(static_cast<unsigned>(function), offset);
        }
    } else {
        damaged("unknown function");
    }
    // At once, because the shift may change before the next channel.
    storeBlock();
    channel.finishBlock(m_blockSize, m_shift);
    if (++m_channel == m_header.channels) {
        m_channel = 0;
        m_output.write(m_bytes);
    }
}

// The block holds the residuals and becomes the samples.
void Decoder::addDifferences(unsigned order, std::int32_t offset)
{
    std::int32_t *y = m_channels[m_channel].samples();
    std::uint32_t last = bitsOf(y[-1]);
    std::uint32_t slope = last - bitsOf(y[-2]);
    std::uint32_t curve = slope - (bitsOf(y[-2]) - bitsOf(y[-3]));
    for (std::uint32_t i = 0; i < m_blockSize; ++i) {
        const std::uint32_t residual = bitsOf(y[i]);
        switch (order) {
        case 0:
            last = residual + bitsOf(offset);
            break;
        case 1:
            last += residual;
            break;
        case 2:
            slope += residual;
            last += slope;
            break;
        default:
            curve += residual;
            slope += curve;
            last += slope;
        }
        y[i] = wrap(last);
    }
}

void Decoder::predictLinearly(unsigned energyBits, std::int32_t offset)
{
    const std::uint32_t order = m_bits.readUnsigned(width::lpcOrder);
    if (order > m_header.maxLpcOrder) {
        damaged("impossible prediction order");
    }
    std::vector<std::uint64_t> coefficients(order);
    for (auto &coefficient : coefficients) {
        coefficient = static_cast<std::uint64_t>(std::int64_t(m_bits.readSigned(width::lpcCoefficient)));
    }
    std::int32_t *y = m_channels[m_channel].samples();
    m_bits.readSigned(energyBits, std::span(y, m_blockSize));

    const std::uint64_t rounding = m_header.version >= 2 ? 1u << lpcFractionBits : 0;
    for (std::uint32_t i = 0; i < m_blockSize; ++i) {
        std::uint64_t sum = rounding;
        const std::int32_t *past = y + i;
        for (const std::uint64_t coefficient : coefficients) {
            sum += coefficient * static_cast<std::uint64_t>(std::int64_t(*--past) - offset);
        }
        const auto predicted = static_cast<std::uint32_t>(static_cast<std::int64_t>(sum) >> lpcFractionBits);
        y[i] = wrap(bitsOf(y[i]) + predicted + bitsOf(offset));
    }
}

void Decoder::storeBlock()
{
    const std::size_t stride = std::size_t(m_type.bytes) * m_header.channels;
    m_bytes.resize(stride * m_blockSize);
    storeChannel(m_channels[m_channel].samples(), m_blockSize, m_shift, m_type, stride,
                 m_bytes.data() + std::size_t(m_channel) * m_type.bytes);
}

} // namespace kruv::shorten
