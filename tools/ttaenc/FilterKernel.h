// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

// Only for the source files that each instantiate it for one kind of registers. Everything here has internal
// linkage and uses nothing from the library, so that code made for newer processors can't replace code made
// for all.
namespace kruv::ttaenc {
namespace {

struct Shape
{
    unsigned fixedShift;
    unsigned adaptiveShift;
};

inline Shape shapeFor(unsigned bytesPerSample)
{
    constexpr Shape shapes[] = {{4, 10}, {5, 9}, {5, 10}};
    return shapes[bytesPerSample - 1];
}

/// x * (2^shift - 1) / 2^shift, rounded down, wrapping.
inline std::uint32_t fixedPrediction(std::uint32_t x, unsigned shift)
{
    return x + static_cast<std::uint32_t>(static_cast<std::int32_t>(0u - x) >> shift);
}

template <class Taps> struct ChannelFilter
{
    Taps taps;
    std::uint32_t last = 0;
    std::int32_t error = 0;

    inline std::uint32_t predict(unsigned shift)
    {
        const std::uint32_t sum = (1u << (shift - 1)) + taps.adaptAndSum(error);
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(sum) >> shift);
    }

    inline std::int32_t encode(std::int32_t sample, Shape shape)
    {
        const auto value = static_cast<std::uint32_t>(sample);
        const std::uint32_t input = value - fixedPrediction(last, shape.fixedShift);
        last = value;
        error = static_cast<std::int32_t>(input - predict(shape.adaptiveShift));
        taps.push(input);
        return error;
    }

    inline std::int32_t decode(std::int32_t residual, Shape shape)
    {
        const std::uint32_t output = static_cast<std::uint32_t>(residual) + predict(shape.adaptiveShift);
        error = residual;
        taps.push(output);
        last = output + fixedPrediction(last, shape.fixedShift);
        return static_cast<std::int32_t>(last);
    }
};

/// Channels are independent, so two at a time fill each other's waiting times.
template <class Taps, unsigned Lanes, bool Encode>
void filterLanes(std::int32_t *data, std::size_t steps, std::size_t stride, Shape shape)
{
    ChannelFilter<Taps> filters[Lanes];
    for (std::size_t i = 0; i < steps; ++i, data += stride) {
        for (unsigned lane = 0; lane < Lanes; ++lane) {
            data[lane] =
                Encode ? filters[lane].encode(data[lane], shape) : filters[lane].decode(data[lane], shape);
        }
    }
}

template <class Taps, bool Encode>
void filterFrame(std::int32_t *data, std::size_t steps, unsigned channels, unsigned bytesPerSample)
{
    const Shape shape = shapeFor(bytesPerSample);
    unsigned channel = 0;
    for (; channel + 2 <= channels; channel += 2) {
        filterLanes<Taps, 2, Encode>(data + channel, steps, channels, shape);
    }
    if (channel < channels) {
        filterLanes<Taps, 1, Encode>(data + channel, steps, channels, shape);
    }
}

} // namespace
} // namespace kruv::ttaenc
