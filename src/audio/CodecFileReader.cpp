// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CodecFileReader.h"

#include "audio/AvLog.h"
#include "audio/CodecPadding.h"
#include "base/HeldWork.h"

#include <algorithm>

namespace kruv {

namespace {

// Of the decoder configuration of Apple Lossless, the box's head included.
constexpr int cookieSize = 36;
constexpr int cookiePacketFrames = 12;
constexpr int cookieDepth = 17;
constexpr int cookieChannels = 21;
constexpr int cookieRate = 32;

// Of FLAC's stream description.
constexpr int flacDescriptionSize = 34;
constexpr int flacDigest = 18;
constexpr int digestSize = 16;

// More is no length of audio, but damage.
constexpr std::int64_t longestAudio = std::int64_t{1} << 47; // frames

std::uint32_t number(const std::uint8_t *bytes)
{
    return static_cast<std::uint32_t>(bytes[0]) << 24 | static_cast<std::uint32_t>(bytes[1]) << 16 |
           static_cast<std::uint32_t>(bytes[2]) << 8 | bytes[3];
}

FormatType formatTypeOf(const AudioContent &content)
{
    switch (content.codec) {
    case AudioContent::Codec::AppleLossless:
        return FormatType::AppleLossless;
    case AudioContent::Codec::Aac:
        return FormatType::Aac;
    case AudioContent::Codec::Pcm:
    case AudioContent::Codec::FloatPcm:
        return FormatType::LinearPcm;
    default:
        return FormatType::Other;
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

bool isFloatingPoint(int sampleFormat)
{
    const AVSampleFormat packed = av_get_packed_sample_fmt(static_cast<AVSampleFormat>(sampleFormat));
    return packed == AV_SAMPLE_FMT_FLT || packed == AV_SAMPLE_FMT_DBL;
}

} // namespace

CodecFileReader::CodecFileReader(const QString &path, const AudioContent &content, const QString &otherwise)
    : m_path(path)
    , m_source(path, content, otherwise)
    , m_packet(av_packet_alloc())
    , m_frame(av_frame_alloc())
{
    openDecoder();
    decodeFirst();
    describe();
    prepareDigest();
}

void CodecFileReader::openDecoder()
{
    const AVCodec *codec = avcodec_find_decoder(m_source.parameters().codec_id);
    m_decoder.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (!m_decoder) {
        AvSource::cannotOpen("fmt?",
                             tr("The audio is coded in %1, which can't be read.")
                                 .arg(QLatin1String(avcodec_get_name(m_source.parameters().codec_id))));
    }
    avcodec_parameters_to_context(m_decoder.get(), &m_source.parameters());
    m_decoder->pkt_timebase = m_source.timeBase();
    // Frames of MPEG audio may be longer than what is in them.
    m_decoder->err_recognition =
        AV_EF_EXPLODE | AV_EF_CRCCHECK |
        (m_source.content().codec == AudioContent::Codec::Mp3 ? AV_EF_COMPLIANT
                                                              : AV_EF_BITSTREAM | AV_EF_BUFFER);
    m_decoder->thread_count = 1; // its complaints are heard on this thread
    const int opened = avcodec_open2(m_decoder.get(), codec, nullptr);
    if (opened < 0) {
        AvSource::cannotOpen("fmt?", AvLog::takeLastError(opened));
    }
}

void CodecFileReader::decodeFirst()
{
    if (av_get_exact_bits_per_sample(m_source.parameters().codec_id) != 0) {
        return; // PCM has nothing more to tell
    }
    try {
        m_holdsFirst = decodeFrame();
    } catch (const std::exception &) {
        m_firstFailure = std::current_exception();
        AvLog::install();
    }
}

void CodecFileReader::describe()
{
    const AVCodecParameters &parameters = m_source.parameters();
    const AVChannelLayout &layout = m_holdsFirst ? m_frame->ch_layout : m_decoder->ch_layout;
    const int rate = m_holdsFirst ? m_frame->sample_rate : parameters.sample_rate;
    m_dataFormat.formatType = formatTypeOf(m_source.content());
    m_dataFormat.sampleRate = static_cast<std::uint32_t>(std::max(0, rate));
    m_dataFormat.channels = static_cast<std::uint32_t>(std::max(0, layout.nb_channels));
    if (layout.order == AV_CHANNEL_ORDER_NATIVE) {
        m_dataFormat.channelMask = static_cast<std::uint32_t>(layout.u.mask);
    }
    describeSamples();
    if (m_dataFormat.sampleRate == 0 || m_dataFormat.channels == 0) {
        AvSource::cannotOpen("fmt?", tr("The sample rate or the number of channels is missing."));
    }
    const CodecPadding padding = CodecPadding::of(m_path, m_source.content());
    m_leading = padding.leading;
    m_lengthIsExact = padding.stated > 0 || padding.counted > 0 ||
                      m_source.content().container == AudioContent::Container::Ogg;
    const std::int64_t frames = m_source.statedFrames(m_dataFormat.sampleRate);
    m_lengthInFrames =
        padding.stated > 0 ? padding.stated : std::max<std::int64_t>(0, frames - padding.counted);
    if (m_lengthInFrames > longestAudio) {
        AvSource::cannotOpen("dta?", tr("The length of the audio makes no sense."));
    }
}

void CodecFileReader::describeSamples()
{
    constexpr std::uint32_t dsdBits = 24;
    const AVCodecParameters &parameters = m_source.parameters();
    if (m_dataFormat.formatType == FormatType::LinearPcm) {
        m_dataFormat.formatFlags = pcmFlags(parameters.codec_id);
        m_dataFormat.bitsPerChannel =
            static_cast<std::uint32_t>(av_get_exact_bits_per_sample(parameters.codec_id));
        m_dataFormat.bytesPerFrame = m_dataFormat.bitsPerChannel / 8 * m_dataFormat.channels;
    } else if (isAppleLossless()) {
        describeAppleLossless();
    } else if (m_source.content().kind == AudioContent::Kind::Dsd) {
        m_dataFormat.formatFlags = AudioStreamFormat::isFloat;
        m_dataFormat.bitsPerChannel = dsdBits;
    } else if (!isLossy()) {
        const int sampleFormat = m_decoder->sample_fmt;
        m_dataFormat.formatFlags = isFloatingPoint(sampleFormat) ? AudioStreamFormat::isFloat : 0;
        const int bits = std::max(m_decoder->bits_per_raw_sample, parameters.bits_per_coded_sample);
        m_dataFormat.bitsPerChannel = static_cast<std::uint32_t>(
            m_dataFormat.isFloatingPoint() || bits <= 0
                ? 8 * av_get_bytes_per_sample(static_cast<AVSampleFormat>(sampleFormat))
                : bits);
    } else if (parameters.codec_tag == 1 && parameters.codec_id == AV_CODEC_ID_DTS) {
        AvSource::cannotOpen("fmt?", tr("The samples look like a coded film sound."));
    }
}

void CodecFileReader::describeAppleLossless()
{
    const AVCodecParameters &parameters = m_source.parameters();
    if (parameters.extradata_size < cookieSize) {
        AvSource::cannotOpen("fmt?", tr("The description of the Apple Lossless audio is missing."));
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

void CodecFileReader::prepareDigest()
{
    const AVCodecParameters &parameters = m_source.parameters();
    if (parameters.codec_id != AV_CODEC_ID_FLAC || parameters.extradata_size < flacDescriptionSize) {
        return;
    }
    m_statedDigest =
        QByteArray(reinterpret_cast<const char *>(parameters.extradata) + flacDigest, digestSize);
    if (m_statedDigest.count('\0') < digestSize) {
        m_digest.emplace(m_dataFormat.bitsPerChannel);
    }
}

QString CodecFileReader::decoder() const
{
    return QStringLiteral("ffmpeg/") + QLatin1StringView(m_decoder->codec->name);
}

std::size_t CodecFileReader::read(std::span<std::uint8_t> buffer)
{
    HeldWork::wait();
    if (m_firstFailure) {
        std::rethrow_exception(m_firstFailure);
    }
    std::size_t filled = take(buffer);
    while (filled < buffer.size() && decodeMore()) {
        filled += take(buffer.subspan(filled));
    }
    const std::uint32_t frameSize = clientFormat().bytesPerFrame;
    m_framesRead += static_cast<std::int64_t>(filled / frameSize);
    if (isLossy() && m_lengthInFrames > 0 && m_framesRead > m_lengthInFrames) {
        // The last packet is filled up with silence.
        const std::int64_t surplus = m_framesRead - m_lengthInFrames;
        filled -= std::min(filled, static_cast<std::size_t>(surplus) * frameSize);
        m_framesRead = m_lengthInFrames;
    }
    if (filled < buffer.size()) {
        checkEnd();
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
        if (!m_holdsFirst && !decodeFrame()) {
            return false;
        }
        m_holdsFirst = false;
        append(*m_frame);
        av_frame_unref(m_frame.get());
        dropLeading();
    }
    return true;
}

void CodecFileReader::dropLeading()
{
    const std::size_t frameSize = clientFormat().bytesPerFrame;
    const auto held = static_cast<std::int64_t>(m_pending.size() / frameSize);
    const std::int64_t dropped = std::min(m_leading, held);
    m_pending.erase(m_pending.begin(), m_pending.begin() + dropped * static_cast<std::int64_t>(frameSize));
    m_leading -= dropped;
}

/// Into m_frame; false at the end.
bool CodecFileReader::decodeFrame()
{
    for (;;) {
        const int received = avcodec_receive_frame(m_decoder.get(), m_frame.get());
        if (received == AVERROR_EOF) {
            return false;
        }
        if (received != AVERROR(EAGAIN)) {
            AvSource::check(received);
            return true;
        }
        const int sent =
            avcodec_send_packet(m_decoder.get(), m_source.next(*m_packet) ? m_packet.get() : nullptr);
        av_packet_unref(m_packet.get());
        AvSource::check(sent);
    }
}

/// Behind the last packet.
void CodecFileReader::checkEnd()
{
    checkLength();
    if (m_digest && m_framesRead > 0 && m_digest->result() != m_statedDigest) {
        AvSource::cannotRead(tr("The audio does not match the checksum that the file holds."));
    }
}

void CodecFileReader::checkLength() const
{
    const std::int64_t missing = m_lengthInFrames - m_framesRead;
    std::int64_t allowed = 0;
    if (isAppleLossless()) {
        // Some writers count the last packet as a whole one.
        allowed = m_source.missesPackets() ? 0 : std::max<std::int64_t>(m_packetFrames, 1) - 1;
    } else if ((isLossy() && !m_lengthIsExact) ||
               m_source.content().container == AudioContent::Container::Asf) {
        // Lossy codecs have delays that nobody states, and this container counts milliseconds.
        allowed = m_dataFormat.sampleRate / 10;
    } else if (m_source.content().codec == AudioContent::Codec::Vorbis) {
        // FFmpeg takes the first of short blocks, as in silence, for the lead of the others.
        constexpr std::int64_t halfOfShortBlock = 256;
        allowed = halfOfShortBlock;
    }
    if (missing > allowed) {
        AvSource::cannotRead(tr("The audio ends after %1 of %2 frames.")
                                 .arg(QString::number(m_framesRead), QString::number(m_lengthInFrames)));
    }
}

void CodecFileReader::digest(const AVFrame &frame)
{
    const auto count = static_cast<std::size_t>(frame.nb_samples) * m_dataFormat.channels;
    if (frame.format == AV_SAMPLE_FMT_S16) {
        m_digest->add(std::span(reinterpret_cast<const std::int16_t *>(frame.extended_data[0]), count));
    } else if (frame.format == AV_SAMPLE_FMT_S32) {
        m_digest->add(std::span(reinterpret_cast<const std::int32_t *>(frame.extended_data[0]), count));
    }
}

void CodecFileReader::append(const AVFrame &frame)
{
    if (!m_converter) {
        m_converter.emplace(frame, clientFormat());
    }
    m_converter->convert(frame, m_pending);
    if (m_digest) {
        digest(frame);
    }
}

} // namespace kruv
