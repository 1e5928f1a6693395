// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>

namespace kruv::ttaenc {

/// WAV bytes (8 bit unsigned, 16 and 24 bit signed, low byte first) become numbers around zero.
/// bytes.size() is samples.size() * bytesPerSample.
void unpackPcm(std::span<const std::uint8_t> bytes, unsigned bytesPerSample, std::span<std::int32_t> samples);
/// The way back; higher bits of a number are dropped.
void packPcm(std::span<const std::int32_t> samples, unsigned bytesPerSample, std::span<std::uint8_t> bytes);

/// Interleaved channels become the differences of neighbours, and the last one what is left of it.
void decorrelate(std::span<std::int32_t> samples, unsigned channels);
void correlate(std::span<std::int32_t> samples, unsigned channels);

} // namespace kruv::ttaenc
