// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kruv::test {

enum class Signal {
    Silence,
    /// 440 Hz at half of full scale, a quarter cycle later in each further channel.
    Sine,
    /// White noise over the full scale, the same for the same seed: hard to compress, each sample matters.
    Noise,
    /// The two ends of the scale in turn.
    FullScaleSquare
};

/// What makeAudio() is to make. The defaults are one second of CD audio.
struct AudioShape
{
    unsigned sampleRate = 44100; // Hz
    unsigned channels = 2;
    unsigned bitsPerSample = 16; // 8, 16, 24 or 32, signed
    std::size_t frames = 44100;
    Signal signal = Signal::Noise;
    std::uint32_t seed = 1;
};

/// Interleaved signed samples in memory.
struct Audio
{
    unsigned sampleRate = 0;
    unsigned channels = 0;
    unsigned bitsPerSample = 0;
    std::vector<std::int32_t> samples;

    std::size_t frames() const { return channels == 0 ? 0 : samples.size() / channels; }
    bool operator==(const Audio &) const = default;
};

Audio makeAudio(const AudioShape &shape);

/// A RIFF WAVE file: plain PCM, or the extensible form above two channels or 16 bits.
QByteArray wavBytes(const Audio &audio);
/// An AIFF file (big-endian PCM).
QByteArray aiffBytes(const Audio &audio);

// These throw std::runtime_error where the file can't be written, or read as plain PCM of its kind.
void writeWav(const QString &path, const AudioShape &shape = {});
void writeAiff(const QString &path, const AudioShape &shape = {});
Audio readWav(const QString &path);
Audio readAiff(const QString &path);

} // namespace kruv::test
