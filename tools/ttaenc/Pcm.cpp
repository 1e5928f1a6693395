// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/Pcm.h"

#include "common/LittleEndian.h"

namespace kruv::ttaenc {

namespace {

constexpr std::int32_t middleOfByte = 128;

// Wraps: only damaged frames get there.
std::int32_t plus(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

std::int32_t minus(std::int32_t a, std::int32_t b)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

} // namespace

void unpackPcm(std::span<const std::uint8_t> bytes, unsigned bytesPerSample, std::span<std::int32_t> samples)
{
    const std::uint8_t *in = bytes.data();
    switch (bytesPerSample) {
    case 1:
        for (std::int32_t &sample : samples) {
            sample = *in++ - middleOfByte;
        }
        break;
    case 2:
        for (std::int32_t &sample : samples) {
            sample = static_cast<std::int16_t>(tools::readLe16(in));
            in += 2;
        }
        break;
    default:
        for (std::int32_t &sample : samples) {
            const std::uint32_t high =
                std::uint32_t(in[0]) << 8 | std::uint32_t(in[1]) << 16 | std::uint32_t(in[2]) << 24;
            sample = static_cast<std::int32_t>(high) >> 8;
            in += 3;
        }
    }
}

void packPcm(std::span<const std::int32_t> samples, unsigned bytesPerSample, std::span<std::uint8_t> bytes)
{
    std::uint8_t *out = bytes.data();
    switch (bytesPerSample) {
    case 1:
        for (const std::int32_t sample : samples) {
            *out++ = static_cast<std::uint8_t>(plus(sample, middleOfByte));
        }
        break;
    case 2:
        for (const std::int32_t sample : samples) {
            tools::writeLe16(out, static_cast<std::uint32_t>(sample));
            out += 2;
        }
        break;
    default:
        for (const std::int32_t sample : samples) {
            tools::writeLe16(out, static_cast<std::uint32_t>(sample));
            out[2] = static_cast<std::uint8_t>(static_cast<std::uint32_t>(sample) >> 16);
            out += 3;
        }
    }
}

void decorrelate(std::span<std::int32_t> samples, unsigned channels)
{
    if (channels < 2) {
        return;
    }
    for (std::int32_t *s = samples.data(), *end = s + samples.size(); s != end; s += channels) {
        for (unsigned c = 0; c + 1 < channels; ++c) {
            s[c] = s[c + 1] - s[c];
        }
        s[channels - 1] -= s[channels - 2] / 2;
    }
}

void correlate(std::span<std::int32_t> samples, unsigned channels)
{
    if (channels < 2) {
        return;
    }
    for (std::int32_t *s = samples.data(), *end = s + samples.size(); s != end; s += channels) {
        s[channels - 1] = plus(s[channels - 1], s[channels - 2] / 2);
        for (unsigned c = channels - 1; c-- > 0;) {
            s[c] = minus(s[c + 1], s[c]);
        }
    }
}

} // namespace kruv::ttaenc
