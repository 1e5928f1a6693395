// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/SampleConverter.h"

#include "audio/AvSource.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kruv {

namespace {

template <typename Sample> bool isBeyondFullScale(const AVFrame &frame)
{
    const bool planar = av_sample_fmt_is_planar(static_cast<AVSampleFormat>(frame.format)) != 0;
    const int planes = planar ? frame.ch_layout.nb_channels : 1;
    const int count = frame.nb_samples * (planar ? 1 : frame.ch_layout.nb_channels);
    for (int plane = 0; plane < planes; ++plane) {
        const auto *samples = reinterpret_cast<const Sample *>(frame.extended_data[plane]);
        if (std::any_of(samples, samples + count, [](Sample sample) { return !(std::fabs(sample) <= 1); })) {
            return true;
        }
    }
    return false;
}

} // namespace

SampleConverter::SampleConverter(const AVFrame &first, const AudioStreamFormat &client)
    : m_format(first.format)
    , m_sampleRate(static_cast<int>(client.sampleRate))
    , m_channels(static_cast<int>(client.channels))
    , m_wide(client.bitsPerChannel <= 16 ? 2 : 4)
    , m_narrow(client.bitsPerChannel / 8)
{
    checkKind(first);
    SwrContext *converter = nullptr;
    AVChannelLayout layout = first.ch_layout; // borrowed, for a call that takes no const
    const AVSampleFormat wide = client.isFloatingPoint() ? AV_SAMPLE_FMT_FLT
                                : m_wide == 2            ? AV_SAMPLE_FMT_S16
                                                         : AV_SAMPLE_FMT_S32;
    swr_alloc_set_opts2(&converter, &layout, wide, m_sampleRate, &layout,
                        static_cast<AVSampleFormat>(m_format), m_sampleRate, 0, nullptr);
    m_converter.reset(converter);
    AvSource::check(converter == nullptr ? AVERROR(ENOMEM) : swr_init(converter));
}

void SampleConverter::checkKind(const AVFrame &frame) const
{
    if (frame.format != m_format || frame.sample_rate != m_sampleRate ||
        frame.ch_layout.nb_channels != m_channels) {
        AvSource::cannotRead(AvSource::tr("The audio is not of the format that the file states."));
    }
}

void SampleConverter::convert(const AVFrame &frame, std::vector<std::uint8_t> &samples)
{
    checkKind(frame);
    noteClipping(frame);
    const auto channels = static_cast<std::size_t>(m_channels);
    m_converted.resize(static_cast<std::size_t>(frame.nb_samples) * channels * m_wide);
    std::uint8_t *target = m_converted.data();
    const int frames = swr_convert(m_converter.get(), &target, frame.nb_samples,
                                   const_cast<const std::uint8_t **>(frame.extended_data), frame.nb_samples);
    AvSource::check(frames);
    const std::size_t count = static_cast<std::size_t>(frames) * channels;
    if (m_wide == m_narrow) {
        samples.swap(m_converted);
        samples.resize(count * m_wide);
        return;
    }
    samples.resize(count * m_narrow);
    const std::uint8_t *source = m_converted.data() + (m_wide - m_narrow);
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(&samples[i * m_narrow], source + i * m_wide, m_narrow);
    }
}

void SampleConverter::noteClipping(const AVFrame &frame)
{
    if (m_clipped) {
        return;
    }
    switch (av_get_packed_sample_fmt(static_cast<AVSampleFormat>(m_format))) {
    case AV_SAMPLE_FMT_FLT:
        m_clipped = isBeyondFullScale<float>(frame);
        break;
    case AV_SAMPLE_FMT_DBL:
        m_clipped = isBeyondFullScale<double>(frame);
        break;
    default:
        break;
    }
}

} // namespace kruv
