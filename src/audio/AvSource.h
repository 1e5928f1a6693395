// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AudioContent.h"
#include "audio/AvFileInput.h"
#include "audio/AvHandles.h"

#include <QCoreApplication>

namespace kruv {

/// The coded audio of a file, packet by packet, from the one demuxer that belongs to what the file is. No
/// other file is ever opened, whatever it names. Every failure is an AudioError.
class AvSource
{
    Q_DECLARE_TR_FUNCTIONS(kruv::AudioFiles)

public:
    /// `otherwise` is said of a file that its demuxer does not know.
    AvSource(const QString &path, const AudioContent &content, const QString &otherwise);

    const AudioContent &content() const { return m_content; }
    const AVCodecParameters &parameters() const { return *m_stream->codecpar; }
    AVRational timeBase() const { return m_stream->time_base; }
    /// The length that the file states, in frames of `sampleRate` a second; 0 where it does not.
    std::int64_t statedFrames(std::uint32_t sampleRate) const;
    /// The next packet; false behind the last one.
    bool next(AVPacket &packet);
    /// Whether fewer packets came than the container lists.
    bool missesPackets() const { return m_packets < avformat_index_get_entries_count(m_stream); }

    [[noreturn]] static void cannotOpen(const char *code, const QString &why);
    [[noreturn]] static void cannotRead(const QString &why);
    /// Fails with what FFmpeg said where a call did, or where it complained and went on.
    static void check(int result);

private:
    void open(const QString &otherwise);
    void chooseStream();
    void checkPacket(const AVPacket &packet);
    void checkEnd();

    const AudioContent m_content;
    AvFileInput m_input;
    AvInput m_container;
    AVStream *m_stream = nullptr; // the container's
    AVCodecID m_codec = AV_CODEC_ID_NONE;
    std::int64_t m_packets = 0;
    std::int64_t m_nextPosition = -1; // where a bare stream's next packet has to begin
};

} // namespace kruv
