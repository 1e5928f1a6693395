// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioStreamFormat.h"
#include "audio/AvHandles.h"

#include <cstdint>
#include <vector>

namespace kruv {

/// Turns a decoder's frames into interleaved integers. A failure is an AudioError.
class SampleConverter
{
public:
    /// All frames have to be like `first`; `client` has its rate and channels.
    SampleConverter(const AVFrame &first, const AudioStreamFormat &client);

    /// Replaces what is in `samples`.
    void convert(const AVFrame &frame, std::vector<std::uint8_t> &samples);
    /// Whether floating-point samples have gone beyond full scale.
    bool hasClipped() const { return m_clipped; }

private:
    void checkKind(const AVFrame &frame) const;
    void noteClipping(const AVFrame &frame);

    const int m_format; // an AVSampleFormat
    const int m_sampleRate;
    const int m_channels;
    const std::size_t m_wide;   // bytes of a sample as FFmpeg converts it
    const std::size_t m_narrow; // and as it is wanted: the high ones of them
    AvPointer<SwrContext> m_converter;
    std::vector<std::uint8_t> m_converted;
    bool m_clipped = false;
};

} // namespace kruv
