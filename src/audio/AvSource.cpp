// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvSource.h"

#include "audio/AudioError.h"
#include "audio/AvLog.h"
#include "audio/OggEnd.h"

#include <algorithm>

namespace kruv {

namespace {

using Container = AudioContent::Container;

int refuseFurtherFiles(AVFormatContext *, AVIOContext **, const char *, int, AVDictionary **)
{
    return AVERROR(EPERM);
}

/// FFmpeg's name; of audio only. Playlists and the like, which name further files, are none of our inputs.
const char *demuxerFor(const AudioContent &content)
{
    switch (content.container) {
    case Container::Unknown:
        break;
    case Container::Shorten:
        return "shn";
    case Container::Wav:
    case Container::Rf64:
    case Container::Bw64:
        return "wav";
    case Container::Wave64:
        return "w64";
    case Container::Caf:
        return "caf";
    case Container::Aiff:
    case Container::Aifc:
        return "aiff";
    case Container::Flac:
        return "flac";
    case Container::WavPack:
        return "wv";
    case Container::Tta:
        return "tta";
    case Container::MonkeysAudio:
        return "ape";
    case Container::Tak:
        return "tak";
    case Container::Mlp:
        return content.codec == AudioContent::Codec::Mlp ? "mlp" : "truehd";
    case Container::Mp4:
        return "mov";
    case Container::Asf:
        return "asf";
    case Container::Dsf:
        return "dsf";
    case Container::Dff:
        return "iff";
    case Container::MusepackSv7:
        return "mpc";
    case Container::MusepackSv8:
        return "mpc8";
    case Container::MpegAudio:
        return "mp3";
    case Container::Adts:
        return "aac";
    case Container::Ogg:
        return "ogg";
    }
    return "";
}

/// Frames that follow each other without a container around them.
bool isBare(Container container)
{
    return container == Container::Mlp || container == Container::MpegAudio || container == Container::Adts;
}

/// Where a check of the container's own is the only one there is, or its oddities can only be damage. Others
/// complain of tags and pictures, too.
bool isStrict(Container container)
{
    return container == Container::Mp4 || container == Container::Wav || container == Container::Rf64 ||
           container == Container::Bw64 || container == Container::Aiff || container == Container::Aifc ||
           container == Container::Tta;
}

} // namespace

void AvSource::cannotOpen(const char *code, const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileOpenURL failed %1").arg(QLatin1String(code)), why);
}

void AvSource::cannotRead(const QString &why)
{
    throw AudioError(QStringLiteral("ExtAudioFileRead failed"), why);
}

void AvSource::check(int result)
{
    if (result < 0) {
        cannotRead(AvLog::takeLastError(result));
    }
    if (AvLog::hasComplained()) {
        cannotRead(AvLog::takeLastError(AVERROR_INVALIDDATA));
    }
}

AvSource::AvSource(const QString &path, const AudioContent &content, const QString &otherwise)
    : m_content(content)
    , m_input(FileDescriptor::openForReading(path), content.start, content.end)
{
    AvLog::install();
    open(otherwise);
    chooseStream();
    // What was said of tags, pictures and a first try is not about the audio; a page with a wrong checksum is
    // left out of it even before the first packet is asked for.
    if (m_content.container != Container::Ogg || !AvLog::lastErrorBegins("CRC mismatch")) {
        AvLog::install();
    }
}

void AvSource::open(const QString &otherwise)
{
    AVFormatContext *container = avformat_alloc_context();
    container->pb = m_input.context();
    container->flags |= AVFMT_FLAG_CUSTOM_IO;
    container->io_open = refuseFurtherFiles;
    container->error_recognition = isStrict(m_content.container) ? AV_EF_EXPLODE | AV_EF_CRCCHECK : 0;
    const AVInputFormat *demuxer = av_find_input_format(demuxerFor(m_content));
    if (demuxer == nullptr) {
        avformat_free_context(container);
        cannotOpen("typ?", tr("FFmpeg's libraries were built without a reader for this kind of file."));
    }
    const int opened = avformat_open_input(&container, nullptr, demuxer, nullptr);
    if (opened < 0) {
        const QString why = AvLog::takeLastError(opened);
        cannotOpen(opened == AVERROR_INVALIDDATA ? "typ?" : "dta?", otherwise.isEmpty() ? why : otherwise);
    }
    m_container.reset(container); // freed by FFmpeg where opening failed
    container->error_recognition |= AV_EF_EXPLODE | AV_EF_CRCCHECK;
}

void AvSource::chooseStream()
{
    for (unsigned i = 0; i < m_container->nb_streams; ++i) {
        AVStream *stream = m_container->streams[i];
        if (m_stream == nullptr && stream->codecpar->codec_type == AVMEDIA_TYPE_AUDIO) {
            m_stream = stream;
        } else {
            stream->discard = AVDISCARD_ALL;
        }
    }
    if (m_stream == nullptr) {
        cannotOpen("dta?", tr("There is no audio in the file."));
    }
    if (parameters().sample_rate == 0 || parameters().ch_layout.nb_channels == 0) {
        avformat_find_stream_info(m_container.get(), nullptr); // tells when the first frames are decoded
    }
    m_codec = parameters().codec_id;
}

std::int64_t AvSource::statedFrames(std::uint32_t sampleRate) const
{
    const bool isGuess = m_container->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    if (m_content.codec == AudioContent::Codec::Pcm || m_content.codec == AudioContent::Codec::FloatPcm) {
        return std::max<std::int64_t>(
            {m_stream->duration, m_stream->nb_frames, 0}); // CAF tells the second alone
    }
    if (m_stream->duration <= 0 || isGuess) {
        return 0;
    }
    const std::int64_t frames =
        av_rescale_q(m_stream->duration, m_stream->time_base, {1, static_cast<int>(sampleRate)});
    const bool countsPadding = m_content.container == Container::Ogg; // of Opus; others have none
    return std::max<std::int64_t>(0, frames - (countsPadding ? parameters().initial_padding : 0));
}

bool AvSource::next(AVPacket &packet)
{
    for (;;) {
        const int got = av_read_frame(m_container.get(), &packet);
        if (got == AVERROR_EOF) {
            checkEnd();
            return false;
        }
        check(got);
        if (packet.stream_index == m_stream->index) {
            checkPacket(packet);
            ++m_packets;
            return true;
        }
        av_packet_unref(&packet);
    }
}

void AvSource::checkPacket(const AVPacket &packet)
{
    if (m_stream->codecpar->codec_id != m_codec) {
        cannotRead(tr("The samples look like a coded film sound."));
    }
    if ((packet.flags & AV_PKT_FLAG_CORRUPT) != 0) {
        cannotRead(tr("The file ends in the middle of its audio."));
    }
    if (!isBare(m_content.container) || packet.pos < 0) {
        return;
    }
    if (m_nextPosition >= 0 && packet.pos != m_nextPosition) {
        cannotRead(tr("The audio is interrupted by something else at byte %1.").arg(m_nextPosition));
    }
    m_nextPosition = packet.pos + packet.size;
}

void AvSource::checkEnd()
{
    check(0);
    const int error = m_container->pb->error;
    if (error < 0 && error != AVERROR_EOF) {
        cannotRead(AvLog::takeLastError(error));
    }
    if (m_content.container == Container::Mlp && m_nextPosition != m_content.end - m_content.start) {
        cannotRead(tr("The file ends in the middle of its audio."));
    }
    if (m_content.container == Container::Ogg && !OggEnd::isThere(m_input.file(), m_content.end)) {
        cannotRead(tr("The file ends before its last page."));
    }
}

} // namespace kruv
