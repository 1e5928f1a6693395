// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/DamageSearch.h"

#include "audio/AudioError.h"
#include "audio/AudioFiles.h"
#include "audio/AvLog.h"
#include "audio/ContentProbe.h"
#include "audio/SampleConverter.h"

#include <algorithm>

namespace kruv {

std::optional<DamageNote> DamageSearch::in(const QString &path, const QString &decoded,
                                           const std::function<bool()> &goesOn)
try {
    DamageSearch search(path, decoded);
    return search.run(goesOn) ? std::optional(search.finished()) : std::nullopt;
} catch (const AudioError &) {
    return {};
}

DamageSearch::DamageSearch(const QString &path, const QString &decoded)
    : m_source(path, ContentProbe::of(path), QString())
    , m_packet(av_packet_alloc())
    , m_frame(av_frame_alloc())
    , m_decoded(AudioFiles::open(decoded))
{
    const AVCodec *codec = avcodec_find_decoder(m_source.parameters().codec_id);
    m_decoder.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
    if (!m_decoder) {
        AvSource::cannotOpen("fmt?", QString());
    }
    avcodec_parameters_to_context(m_decoder.get(), &m_source.parameters());
    m_decoder->pkt_timebase = m_source.timeBase();
    m_decoder->err_recognition = AV_EF_EXPLODE | AV_EF_CRCCHECK | AV_EF_BITSTREAM | AV_EF_BUFFER;
    m_decoder->thread_count = 1; // its complaints are heard on this thread
    if (avcodec_open2(m_decoder.get(), codec, nullptr) < 0) {
        AvSource::cannotOpen("fmt?", QString());
    }
    m_note.sampleRate = static_cast<std::uint32_t>(m_source.parameters().sample_rate);
    m_note.allSamples = m_source.statedFrames(m_note.sampleRate);
}

bool DamageSearch::run(const std::function<bool()> &goesOn)
{
    while (nextPacket()) {
        if (!goesOn()) {
            return false;
        }
        if (decodePacket() && isInDecoded(firstSample())) {
            cover(firstSample());
        }
        av_packet_unref(m_packet.get());
    }
    return true;
}

/// Of the packet.
std::int64_t DamageSearch::firstSample() const
{
    return m_packet->pts == AV_NOPTS_VALUE
               ? m_covered
               : av_rescale_q(m_packet->pts, m_source.timeBase(), {1, m_source.parameters().sample_rate});
}

/// The container may complain of what lies between two packets; the packets behind it come all the same.
bool DamageSearch::nextPacket()
{
    constexpr int mostComplaints = 100'000; // in a row
    for (int i = 0; i < mostComplaints; ++i) {
        try {
            return m_source.next(*m_packet);
        } catch (const AudioError &) {
            AvLog::install();
        }
    }
    return false;
}

/// Into m_sound. False where the packet is damaged.
bool DamageSearch::decodePacket()
{
    m_sound.clear();
    const bool isTaken = avcodec_send_packet(m_decoder.get(), m_packet.get()) >= 0;
    while (isTaken && avcodec_receive_frame(m_decoder.get(), m_frame.get()) >= 0) {
        SampleConverter(*m_frame, m_decoded->clientFormat()).convert(*m_frame, m_sound);
    }
    const bool isSound = isTaken && !AvLog::hasComplained();
    AvLog::install();
    return isSound && !m_sound.empty();
}

bool DamageSearch::isInDecoded(std::int64_t first)
{
    const std::size_t frameSize = m_decoded->clientFormat().bytesPerFrame;
    const auto read = [&](std::int64_t samples) {
        m_buffer.resize(static_cast<std::size_t>(samples) * frameSize);
        m_buffer.resize(m_decoded->read(m_buffer));
        m_decodedRead += static_cast<std::int64_t>(m_buffer.size() / frameSize);
        return !m_buffer.empty();
    };
    constexpr std::int64_t mostAtOnce = 65536;
    while (m_decodedRead < first && read(std::min(first - m_decodedRead, mostAtOnce))) {
    }
    return m_decodedRead == first && read(static_cast<std::int64_t>(m_sound.size() / frameSize)) &&
           m_buffer == m_sound;
}

void DamageSearch::cover(std::int64_t first)
{
    if (first > m_covered) {
        m_note.places.push_back({m_covered, first - m_covered});
    }
    const auto samples = static_cast<std::int64_t>(m_sound.size() / m_decoded->clientFormat().bytesPerFrame);
    m_covered = std::max(m_covered, first + samples);
}

DamageNote DamageSearch::finished()
{
    if (m_note.allSamples > m_covered) {
        m_note.places.push_back({m_covered, m_note.allSamples - m_covered});
    }
    return m_note;
}

} // namespace kruv
