// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

struct AACENCODER;

namespace kruv::aacplusenc {

/// The HE-AAC encoder of libfdk-aac, giving raw access units of 2048 frames at a constant bit rate.
class HeAacEncoder
{
public:
    /// Throws ToolError when there is no HE-AAC of this rate (Hz), these channels (1 to 6, or 8; in WAV
    /// order) for these speakers (a mask as in WAVEFORMATEXTENSIBLE, 0 = not told), and this bit rate
    /// (bit/s).
    HeAacEncoder(std::uint32_t sampleRate, unsigned channels, std::uint32_t speakers, std::uint32_t bitRate);

    /// Frames that a decoder puts out before the first one of the source, spectral band replication included.
    std::uint32_t delay() const { return m_delay; }
    std::uint32_t framesPerAccessUnit() const { return m_framesPerAccessUnit; }
    const std::vector<std::uint8_t> &decoderConfig() const { return m_decoderConfig; }

    /// Takes exactly framesPerAccessUnit() frames of interleaved samples and gives an access unit, empty
    /// while the encoder is still filling up; valid until the next call. What has gone in has come out when
    /// delay() frames more have followed.
    std::span<const std::uint8_t> encode(std::span<const std::int16_t> samples);

private:
    struct Closer
    {
        void operator()(AACENCODER *encoder) const;
    };

    bool set(int parameter, std::uint32_t value);

    std::unique_ptr<AACENCODER, Closer> m_encoder;
    std::uint32_t m_delay = 0;
    std::uint32_t m_framesPerAccessUnit = 0;
    std::vector<std::uint8_t> m_decoderConfig;
    std::vector<std::int16_t> m_input;
    std::vector<std::uint8_t> m_output;
};

} // namespace kruv::aacplusenc
