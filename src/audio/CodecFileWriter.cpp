// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CodecFileWriter.h"

#include "audio/AudioError.h"
#include "audio/AvLog.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kruv {

namespace {

constexpr int fifoFrames = 8192; // to start with; it grows

// Below this FFmpeg's Apple Lossless encoder writes beyond the space it gave itself, several channels at
// least, and ends the whole process. It does not where it leaves the samples uncompressed.
constexpr int fewestCompressibleFrames = 16;

[[noreturn]] void cannotHold(const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileCreateWithURL failed fmt?"), why);
}

/// The layout of so many channels that an encoder names first; false where it has none.
bool takeOwnLayout(AVCodecContext &encoder, int channels)
{
    for (const AVChannelLayout *layout = encoder.codec->ch_layouts;
         layout != nullptr && layout->nb_channels != 0; ++layout) {
        if (layout->nb_channels == channels) {
            return av_channel_layout_copy(&encoder.ch_layout, layout) == 0;
        }
    }
    return false;
}

bool hasLayout(const AVCodec &codec, const AVChannelLayout &wanted)
{
    const AVChannelLayout *layout = codec.ch_layouts;
    if (layout == nullptr) {
        return true; // it will say so when it is opened
    }
    while (layout->nb_channels != 0 && av_channel_layout_compare(layout, &wanted) != 0) {
        ++layout;
    }
    return layout->nb_channels != 0;
}

bool hasRate(const AVCodec &codec, int rate)
{
    const int *each = codec.supported_samplerates;
    while (each != nullptr && *each != 0 && *each != rate) {
        ++each;
    }
    return each == nullptr || *each == rate;
}

} // namespace

CodecFileWriter::CodecFileWriter(const QString &path, const AudioStreamFormat &format)
    : m_format(format)
    , m_frame(av_frame_alloc())
    , m_packet(av_packet_alloc())
{
    AvLog::install();
    chooseEncoder();
    m_io.emplace(FileDescriptor::create(path));
}

void CodecFileWriter::chooseEncoder()
{
    if (m_format.formatType == FormatType::AppleLossless) {
        chooseAppleLossless();
    } else {
        chooseAac();
    }
    m_encoder->sample_rate = static_cast<int>(m_format.sampleRate);
    m_encoder->time_base = {1, m_encoder->sample_rate};
    m_encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER | AV_CODEC_FLAG_BITEXACT;
    m_encoder->thread_count = 1;
}

void CodecFileWriter::chooseAppleLossless()
{
    const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_ALAC);
    if (codec == nullptr) {
        cannotHold(tr("This FFmpeg has no Apple Lossless encoder."));
    }
    m_encoder.reset(avcodec_alloc_context3(codec));
    const std::uint32_t width = m_format.bitsPerChannel;
    if (width != 16 && width != 24) {
        cannotHold(tr("Apple Lossless is written with 16 or 24 bits; this audio has %1.").arg(width));
    }
    const int channels = static_cast<int>(m_format.channels);
    if (!takeOwnLayout(*m_encoder, channels)) {
        cannotHold(tr("Apple Lossless has no layout of %1 channels.").arg(channels));
    }
    m_encoder->sample_fmt = width == 16 ? AV_SAMPLE_FMT_S16P : AV_SAMPLE_FMT_S32P;
    m_encoder->bits_per_raw_sample = static_cast<int>(width);
}

void CodecFileWriter::chooseAac()
{
    const AVCodec *codec = avcodec_find_encoder_by_name("libfdk_aac");
    codec = codec == nullptr ? avcodec_find_encoder(AV_CODEC_ID_AAC) : codec;
    if (codec == nullptr) {
        cannotHold(tr("This FFmpeg has no AAC encoder."));
    }
    m_encoder.reset(avcodec_alloc_context3(codec));
    const int rate = static_cast<int>(m_format.sampleRate);
    if (!hasRate(*codec, rate)) {
        cannotHold(tr("AAC has no sample rate of %1 Hz.").arg(rate));
    }
    const int channels = static_cast<int>(m_format.channels);
    if (channels > 8) {
        cannotHold(tr("AAC has no layout of %1 channels.").arg(channels));
    }
    if (!takeOwnLayout(*m_encoder, channels)) {
        av_channel_layout_default(&m_encoder->ch_layout, channels);
    }
    if (channels == 3) {
        // By default the third would be an LFE, which the encoder cuts to its lowest tones.
        setChannelLayout(AV_CH_LAYOUT_SURROUND);
    }
    m_encoder->sample_fmt = codec->sample_fmts[0];
}

void CodecFileWriter::setAacSettings(const AacSettings &settings)
{
    settings.applyTo(*m_encoder);
}

bool CodecFileWriter::setChannelLayout(std::uint32_t mask)
{
    AVChannelLayout layout = {};
    if (av_channel_layout_from_mask(&layout, mask) < 0 || !hasLayout(*m_encoder->codec, layout)) {
        return false;
    }
    return av_channel_layout_copy(&m_encoder->ch_layout, &layout) == 0;
}

void CodecFileWriter::begin(bool empty)
{
    m_begun = true;
    openEncoder();
    openContainer(empty);
    openConverter();
}

void CodecFileWriter::openEncoder()
{
    const int opened = avcodec_open2(m_encoder.get(), m_encoder->codec, nullptr);
    if (opened < 0) {
        cannotHold(AvLog::takeLastError(opened));
    }
}

void CodecFileWriter::openContainer(bool empty)
{
    AVFormatContext *container = nullptr;
    const int allocated = avformat_alloc_output_context2(&container, nullptr, "ipod", nullptr);
    m_container.reset(container);
    AVStream *stream = allocated < 0 ? nullptr : avformat_new_stream(container, nullptr);
    if (stream == nullptr) {
        cannotWrite(allocated < 0 ? allocated : AVERROR(ENOMEM));
    }
    container->pb = m_io->context();
    container->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
    stream->time_base = m_encoder->time_base;
    avcodec_parameters_from_context(stream->codecpar, m_encoder.get());
    AVDictionary *options = nullptr;
    // Lengths to the frame; milliseconds otherwise.
    av_dict_set_int(&options, "movie_timescale", m_encoder->sample_rate, 0);
    if (m_format.formatType == FormatType::AppleLossless) {
        av_dict_set(&options, "use_editlist", "0", 0); // nothing to leave out
    }
    if (empty) {
        // A track without samples is left out otherwise.
        av_dict_set(&options, "movflags", "empty_moov", 0);
    }
    const int written = avformat_write_header(container, &options);
    av_dict_free(&options);
    if (written < 0) {
        cannotWrite(written);
    }
}

void CodecFileWriter::openConverter()
{
    const auto clientRate = static_cast<int>(clientFormat().sampleRate);
    const AVSampleFormat clientSamples =
        clientFormat().bitsPerChannel == 16 ? AV_SAMPLE_FMT_S16 : AV_SAMPLE_FMT_S32;
    int opened = AVERROR(ENOMEM);
    for (const bool soxr : {true, false}) { // the better resampler, where it is built in
        SwrContext *converter = nullptr;
        swr_alloc_set_opts2(&converter, &m_encoder->ch_layout, m_encoder->sample_fmt, m_encoder->sample_rate,
                            &m_encoder->ch_layout, clientSamples, clientRate, 0, nullptr);
        m_converter.reset(converter);
        if (converter != nullptr && clientRate != m_encoder->sample_rate) {
            av_opt_set_int(converter, "resampler", soxr ? SWR_ENGINE_SOXR : SWR_ENGINE_SWR, 0);
            av_opt_set_double(converter, "precision", 28, 0); // bits, of the one
            av_opt_set_int(converter, "filter_size", 128, 0); // taps, of the other
        }
        opened = converter == nullptr ? AVERROR(ENOMEM) : swr_init(converter);
        if (opened >= 0) {
            break;
        }
    }
    m_fifo.reset(av_audio_fifo_alloc(m_encoder->sample_fmt, m_encoder->ch_layout.nb_channels, fifoFrames));
    if (opened < 0 || !m_fifo) {
        cannotWrite(opened < 0 ? opened : AVERROR(ENOMEM));
    }
}

const std::uint8_t *CodecFileWriter::widened(std::span<const std::uint8_t> frames)
{
    const std::size_t narrow = clientFormat().bitsPerChannel / 8;
    if (narrow == 2 || narrow == 4) {
        return frames.data();
    }
    const std::size_t samples = frames.size() / narrow;
    m_widened.assign(samples * 4, 0);
    std::uint8_t *target = m_widened.data() + (4 - narrow); // the high bytes
    for (std::size_t i = 0; i < samples; ++i) {
        std::memcpy(target + i * 4, &frames[i * narrow], narrow);
    }
    return m_widened.data();
}

void CodecFileWriter::write(std::span<const std::uint8_t> frames)
{
    if (frames.empty()) {
        return;
    }
    if (!m_begun) {
        begin(false);
    }
    convert(widened(frames), static_cast<int>(frames.size() / clientFormat().bytesPerFrame));
    encodeFifo(false);
}

void CodecFileWriter::convert(const std::uint8_t *frames, int count)
{
    const int most = swr_get_out_samples(m_converter.get(), count);
    m_frame->format = m_encoder->sample_fmt;
    m_frame->sample_rate = m_encoder->sample_rate;
    m_frame->nb_samples = std::max(most, 1);
    av_channel_layout_copy(&m_frame->ch_layout, &m_encoder->ch_layout);
    int done = av_frame_get_buffer(m_frame.get(), 0);
    if (done >= 0) {
        done = swr_convert(m_converter.get(), m_frame->extended_data, m_frame->nb_samples,
                           frames == nullptr ? nullptr : &frames, count);
    }
    if (done > 0) {
        done = av_audio_fifo_write(m_fifo.get(), reinterpret_cast<void **>(m_frame->extended_data), done);
    }
    av_frame_unref(m_frame.get());
    if (done < 0) {
        cannotWrite(done);
    }
}

void CodecFileWriter::stopCompressing()
{
    AvPointer<AVCodecContext> plain(avcodec_alloc_context3(m_encoder->codec));
    plain->sample_rate = m_encoder->sample_rate;
    plain->sample_fmt = m_encoder->sample_fmt;
    plain->bits_per_raw_sample = m_encoder->bits_per_raw_sample;
    plain->time_base = m_encoder->time_base;
    plain->flags = m_encoder->flags;
    plain->compression_level = 0;
    av_channel_layout_copy(&plain->ch_layout, &m_encoder->ch_layout);
    m_encoder = std::move(plain); // the codec looks at each packet by itself: nothing is left in the old one
    openEncoder();
}

void CodecFileWriter::encodeFifo(bool all)
{
    const int packetFrames = m_encoder->frame_size;
    for (;;) {
        const int waiting = av_audio_fifo_size(m_fifo.get());
        if (waiting == 0 || (waiting < packetFrames && !all)) {
            return;
        }
        if (waiting < fewestCompressibleFrames && m_format.formatType == FormatType::AppleLossless) {
            stopCompressing();
        }
        m_frame->format = m_encoder->sample_fmt;
        m_frame->sample_rate = m_encoder->sample_rate;
        m_frame->nb_samples = std::min(waiting, packetFrames);
        av_channel_layout_copy(&m_frame->ch_layout, &m_encoder->ch_layout);
        const int allocated = av_frame_get_buffer(m_frame.get(), 0);
        if (allocated < 0) {
            cannotWrite(allocated);
        }
        av_audio_fifo_read(m_fifo.get(), reinterpret_cast<void **>(m_frame->extended_data),
                           m_frame->nb_samples);
        m_frame->pts = m_position;
        m_position += m_frame->nb_samples;
        encode(m_frame.get());
        av_frame_unref(m_frame.get());
    }
}

void CodecFileWriter::encode(AVFrame *frame)
{
    int result = avcodec_send_frame(m_encoder.get(), frame);
    while (result >= 0) {
        result = avcodec_receive_packet(m_encoder.get(), m_packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return;
        }
        if (result >= 0) {
            m_packet->stream_index = 0;
            av_packet_rescale_ts(m_packet.get(), m_encoder->time_base, m_container->streams[0]->time_base);
            result = av_write_frame(m_container.get(), m_packet.get());
            av_packet_unref(m_packet.get());
        }
    }
    cannotWrite(result);
}

void CodecFileWriter::finish()
{
    if (!m_begun) {
        begin(true);
    }
    while (swr_get_delay(m_converter.get(), m_encoder->sample_rate) > 0) {
        const int before = av_audio_fifo_size(m_fifo.get());
        convert(nullptr, 0);
        if (av_audio_fifo_size(m_fifo.get()) == before) {
            break;
        }
    }
    encodeFifo(true);
    if (m_position > 0) {
        encode(nullptr);
    }
    const int completed = av_write_trailer(m_container.get());
    if (completed < 0) {
        cannotWrite(completed);
    }
    check(m_io->finish());
}

void CodecFileWriter::cannotWrite(int code)
{
    check(m_io->writeError());
    throw AudioError(QStringLiteral("ExtAudioFileWrite failed"), AvLog::takeLastError(code));
}

} // namespace kruv
