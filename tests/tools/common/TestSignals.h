// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/WavFormat.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kruv::tools::test {

using Bytes = std::vector<std::uint8_t>;

enum class Signal {
    Silence,
    Noise,
    Square,
    Alternating,
    SameChannels,
    Impulses,
    Sweep,
    Music,
    LowZeros,
    Mixed
};
inline constexpr Signal allSignals[] = {
    Signal::Silence,  Signal::Noise, Signal::Square, Signal::Alternating, Signal::SameChannels,
    Signal::Impulses, Signal::Sweep, Signal::Music,  Signal::LowZeros,    Signal::Mixed};

/// Full-scale where the kind allows it; the same numbers in every run.
Bytes pcm(Signal signal, const WavFormat &format, std::size_t frames);
/// All of them, one after the other.
Bytes everySignal(const WavFormat &format, std::size_t framesEach);

/// A WAV file; before and after are whole chunks around the audio. The pad byte for odd audio is added.
Bytes wav(const WavFormat &format, const Bytes &audio, const Bytes &before = {}, const Bytes &after = {});
/// A WAV file in the extensible form above two channels, as decoders write it.
Bytes wavWithSpeakers(const WavFormat &format, const Bytes &audio);
/// A Wave64 file, which ends with the audio and its padding to 8 bytes.
Bytes wave64(const WavFormat &format, const Bytes &audio, const Bytes &before = {});
Bytes chunk(const std::string &id, std::size_t size);
/// A 16-bit stereo song of that many frames, as a WAV file.
Bytes song(std::size_t frames);

Bytes fromHex(const std::string &hex);
Bytes operator+(Bytes left, const Bytes &right);

} // namespace kruv::tools::test
