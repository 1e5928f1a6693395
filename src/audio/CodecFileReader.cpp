// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CodecFileReader.h"

#include "audio/AudioError.h"
#include "audio/AvLog.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace kruv {

namespace {

// Containers of audio only. Playlists and the like, which name further files, are none of our inputs.
constexpr const char *containers = "wav,aiff,mov";

// Of the decoder configuration of Apple Lossless, the box's head included.
constexpr int cookieSize = 36;
constexpr int cookiePacketFrames = 12;
constexpr int cookieDepth = 17;
constexpr int cookieChannels = 21;
constexpr int cookieRate = 32;

// More is no length of audio, but damage.
constexpr std::int64_t longestAudio = std::int64_t{1} << 47; // frames

std::uint32_t number(const std::uint8_t *bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

int refuseFurtherFiles(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **)
{
    return AVERROR(EPERM);
}

[[noreturn]] void cannotOpen(const char *code, const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileOpenURL failed %1").arg(QLatin1String(code)), why);
}

[[noreturn]] void cannotRead(const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileRead failed"), why);
}

FormatType formatTypeOf(AVCodecID codec)
{
    switch (codec) {
    case AV_CODEC_ID_ALAC:
        return FormatType::AppleLossless;
    case AV_CODEC_ID_AAC:
        return FormatType::Aac;
    default:
        return av_get_exact_bits_per_sample(codec) >= 8 && codec != AV_CODEC_ID_PCM_ALAW &&
                       codec != AV_CODEC_ID_PCM_MULAW
                   ? FormatType::LinearPcm
                   : FormatType::Other;
    }
}

/// Of linear PCM.
std::uint32_t pcmFlags(AVCodecID codec)
{
    const std::string_view name = avcodec_get_name(codec);
    const bool floating = name.starts_with("pcm_f");
    return AudioStreamFormat::isPacked |
           (floating ? AudioStreamFormat::isFloat : AudioStreamFormat::isSignedInteger) |
           (name.ends_with("be") ? AudioStreamFormat::isBigEndian : 0);
}

} // namespace

CodecFileReader::CodecFileReader(const QString &path, const QString &otherwise)
    : m_io(FileDescriptor::openForReading(path), AvIo::Direction::Read)
    , m_packet(av_packet_alloc())
    , m_frame(av_frame_alloc())
{
    AvLog::install();
    openContainer(otherwise);
    openDecoder();
    describe();
}

void CodecFileReader::openContainer(const QString &otherwise)
{
    AVFormatContext *container = avformat_alloc_context();
    container->pb = m_io.context();
    container->flags |= AVFMT_FLAG_CUSTOM_IO;
    container->io_open = refuseFurtherFiles;
    container->error_recognition = AV_EF_EXPLODE;
    AVDictionary *options = nullptr;
    av_dict_set(&options, "format_whitelist", containers, 0);
    const int opened = avformat_open_input(&container, nullptr, nullptr, &options);
    av_dict_free(&options);
    if (opened < 0) {
        const QString why = AvLog::takeLastError(opened);
        cannotOpen(opened == AVERROR_INVALIDDATA ? "typ?" : "dta?", otherwise.isEmpty() ? why : otherwise);
    }
    m_container.reset(container); // freed by FFmpeg where opening failed
    const int index = av_find_best_stream(container, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (index < 0) {
        cannotOpen("dta?", QStringLiteral("There is no audio in the file."));
    }
    m_stream = container->streams[index];
    m_codecId = m_stream->codecpar->codec_id;
    for (unsigned i = 0; i < container->nb_streams; ++i) {
        container->streams[i]->discard = static_cast<int>(i) == index ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
    }
}

void CodecFileReader::openDecoder()
{
    const AVCodec *codec = avcodec_find_decoder(m_codecId);
    m_decoder.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (!m_decoder) {
        cannotOpen("fmt?", QStringLiteral("The audio is coded in %1, which can't be read.")
                               .arg(QLatin1String(avcodec_get_name(m_codecId))));
    }
    avcodec_parameters_to_context(m_decoder.get(), m_stream->codecpar);
    m_decoder->pkt_timebase = m_stream->time_base;
    m_decoder->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK | AV_EF_BITSTREAM | AV_EF_BUFFER;
    m_decoder->thread_count = 1;
    const int opened = avcodec_open2(m_decoder.get(), codec, nullptr);
    if (opened < 0) {
        cannotOpen("fmt?", AvLog::takeLastError(opened));
    }
}

void CodecFileReader::describe()
{
    const AVCodecParameters &parameters = *m_stream->codecpar;
    m_dataFormat.formatType = formatTypeOf(m_codecId);
    m_dataFormat.sampleRate = static_cast<std::uint32_t>(std::max(0, parameters.sample_rate));
    m_dataFormat.channels = static_cast<std::uint32_t>(std::max(0, m_decoder->ch_layout.nb_channels));
    if (m_decoder->ch_layout.order == AV_CHANNEL_ORDER_NATIVE) {
        m_dataFormat.channelMask = static_cast<std::uint32_t>(m_decoder->ch_layout.u.mask);
    }
    if (m_dataFormat.formatType == FormatType::LinearPcm) {
        m_dataFormat.formatFlags = pcmFlags(m_codecId);
        m_dataFormat.bitsPerChannel = static_cast<std::uint32_t>(av_get_exact_bits_per_sample(m_codecId));
        m_dataFormat.bytesPerFrame = m_dataFormat.bitsPerChannel / 8 * m_dataFormat.channels;
    } else if (isAppleLossless()) {
        describeAppleLossless();
    } else if (parameters.codec_tag == 1) {
        cannotOpen("fmt?", QStringLiteral("The samples look like a coded film sound."));
    }
    if (m_dataFormat.sampleRate == 0 || m_dataFormat.channels == 0) {
        cannotOpen("fmt?", QStringLiteral("The sample rate or the number of channels is missing."));
    }
    if (m_stream->duration > 0) {
        const AVRational frame = {1, static_cast<int>(m_dataFormat.sampleRate)};
        m_lengthInFrames = av_rescale_q(m_stream->duration, m_stream->time_base, frame);
    }
    if (m_lengthInFrames > longestAudio) {
        cannotOpen("dta?", QStringLiteral("The length of the audio makes no sense."));
    }
}

void CodecFileReader::describeAppleLossless()
{
    const AVCodecParameters &parameters = *m_stream->codecpar;
    if (parameters.extradata_size < cookieSize) {
        cannotOpen("fmt?", QStringLiteral("The description of the Apple Lossless audio is missing."));
    }
    const std::uint8_t *cookie = parameters.extradata;
    const std::uint32_t depth = cookie[cookieDepth];
    m_dataFormat.bitsPerChannel = depth;
    m_dataFormat.formatFlags = depth == 16 ? 1 : depth == 20 ? 2 : depth == 24 ? 3 : depth == 32 ? 4 : 0;
    m_dataFormat.channels = cookie[cookieChannels];
    m_dataFormat.sampleRate = number(cookie + cookieRate);
    m_packetFrames = number(cookie + cookiePacketFrames);
    if (m_dataFormat.channels == 4 || m_dataFormat.channels == 8) {
        m_dataFormat.channelMask = 0; // the codec has one name for all layouts of so many
    }
}

std::size_t CodecFileReader::read(std::span<std::uint8_t> buffer)
{
    std::size_t filled = take(buffer);
    while (filled < buffer.size() && decodeMore()) {
        filled += take(buffer.subspan(filled));
    }
    const std::uint32_t frameSize = clientFormat().bytesPerFrame;
    m_framesRead += static_cast<std::int64_t>(filled / frameSize);
    const bool lossy = m_dataFormat.formatType == FormatType::Aac;
    if (lossy && m_lengthInFrames > 0 && m_framesRead > m_lengthInFrames) {
        // The last packet is filled up with silence.
        const std::int64_t surplus = m_framesRead - m_lengthInFrames;
        filled -= std::min(filled, static_cast<std::size_t>(surplus) * frameSize);
        m_framesRead = m_lengthInFrames;
    }
    if (filled < buffer.size() && hasLostAudio()) {
        cannotRead(QStringLiteral("The audio ends after %1 of %2 frames.")
                       .arg(QString::number(m_framesRead), QString::number(m_lengthInFrames)));
    }
    return filled;
}

std::size_t CodecFileReader::take(std::span<std::uint8_t> buffer)
{
    const std::size_t count = std::min(buffer.size(), m_pending.size() - m_taken);
    std::copy_n(m_pending.data() + m_taken, count, buffer.data());
    m_taken += count;
    return count;
}

bool CodecFileReader::decodeMore()
{
    m_pending.clear();
    m_taken = 0;
    while (m_pending.empty()) {
        const int received = avcodec_receive_frame(m_decoder.get(), m_frame.get());
        if (received == AVERROR_EOF) {
            return false;
        }
        if (received == AVERROR(EAGAIN)) {
            const int sent = avcodec_send_packet(m_decoder.get(), nextPacket() ? m_packet.get() : nullptr);
            av_packet_unref(m_packet.get());
            if (sent < 0) {
                cannotRead(AvLog::takeLastError(sent));
            }
        } else if (received < 0) {
            cannotRead(AvLog::takeLastError(received));
        } else {
            append(*m_frame);
            av_frame_unref(m_frame.get());
        }
    }
    return true;
}

bool CodecFileReader::nextPacket()
{
    for (;;) {
        const int got = av_read_frame(m_container.get(), m_packet.get());
        if (got == AVERROR_EOF) {
            return false;
        }
        if (got < 0) {
            cannotRead(AvLog::takeLastError(got));
        }
        if (m_stream->codecpar->codec_id != m_codecId) {
            cannotRead(QStringLiteral("The samples look like a coded film sound."));
        }
        if (m_packet->stream_index == m_stream->index) {
            if ((m_packet->flags & AV_PKT_FLAG_CORRUPT) != 0) {
                cannotRead(QStringLiteral("The file ends in the middle of its audio."));
            }
            ++m_packetsRead;
            return true;
        }
        av_packet_unref(m_packet.get());
    }
}

/// At the end of the packets.
bool CodecFileReader::hasLostAudio() const
{
    const std::int64_t missing = m_lengthInFrames - m_framesRead;
    if (isAppleLossless()) {
        // Some writers count the last packet as a whole one.
        return missing >= std::max<std::int64_t>(m_packetFrames, 1) ||
               (missing > 0 && m_packetsRead < avformat_index_get_entries_count(m_stream));
    }
    return missing > 0 && av_get_exact_bits_per_sample(m_codecId) >= 8;
}

void CodecFileReader::openConverter(const AVFrame &frame)
{
    if (frame.ch_layout.nb_channels != static_cast<int>(m_dataFormat.channels) ||
        frame.sample_rate != static_cast<int>(m_dataFormat.sampleRate)) {
        cannotRead(QStringLiteral("The audio is not of the format that the file states."));
    }
    SwrContext *converter = nullptr;
    AVChannelLayout layout = frame.ch_layout; // borrowed, for a call that takes no const
    const AVSampleFormat wanted = clientFormat().bitsPerChannel <= 16 ? AV_SAMPLE_FMT_S16 : AV_SAMPLE_FMT_S32;
    swr_alloc_set_opts2(&converter, &layout, wanted, frame.sample_rate, &layout,
                        static_cast<AVSampleFormat>(frame.format), frame.sample_rate, 0, nullptr);
    m_converter.reset(converter);
    const int opened = converter == nullptr ? AVERROR(ENOMEM) : swr_init(converter);
    if (opened < 0) {
        cannotRead(AvLog::takeLastError(opened));
    }
}

void CodecFileReader::append(const AVFrame &frame)
{
    if (!m_converter) {
        openConverter(frame);
    }
    noteClipping(frame);
    const std::size_t wide = clientFormat().bitsPerChannel <= 16 ? 2 : 4;
    const std::size_t narrow = clientFormat().bitsPerChannel / 8;
    const std::size_t channels = m_dataFormat.channels;
    m_converted.resize(static_cast<std::size_t>(frame.nb_samples) * channels * wide);
    std::uint8_t *target = m_converted.data();
    const int frames = swr_convert(m_converter.get(), &target, frame.nb_samples,
                                   const_cast<const std::uint8_t **>(frame.extended_data), frame.nb_samples);
    if (frames < 0) {
        cannotRead(AvLog::takeLastError(frames));
    }
    const std::size_t samples = static_cast<std::size_t>(frames) * channels;
    if (wide == narrow) {
        m_pending.swap(m_converted);
        m_pending.resize(samples * wide);
        return;
    }
    m_pending.resize(samples * narrow);
    const std::uint8_t *source = m_converted.data() + (wide - narrow); // the high bytes
    for (std::size_t i = 0; i < samples; ++i) {
        std::memcpy(&m_pending[i * narrow], source + i * wide, narrow);
    }
}

void CodecFileReader::noteClipping(const AVFrame &frame)
{
    if (m_dataFormat.formatType != FormatType::LinearPcm || frame.format != AV_SAMPLE_FMT_FLT) {
        return;
    }
    const auto *samples = reinterpret_cast<const float *>(frame.extended_data[0]);
    const std::size_t count = static_cast<std::size_t>(frame.nb_samples) * m_dataFormat.channels;
    m_clipped = m_clipped || std::any_of(samples, samples + count,
                                         [](float sample) { return !(std::fabs(sample) <= 1.0F); });
}

} // namespace kruv
