// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AvHandles.h"
#include "audio/AvIo.h"
#include "audio/ExtAudioFileReader.h"

#include <vector>

namespace kruv {

/// What FFmpeg's demuxers and decoders read: MPEG-4 audio, and WAV and AIFF-C files that hold something else
/// than plain integer PCM.
class CodecFileReader : public ExtAudioFileReader
{
public:
    /// `otherwise` is said of a file that no demuxer knows.
    CodecFileReader(const QString &path, const QString &otherwise);

    std::size_t read(std::span<std::uint8_t> buffer) override;
    bool hasClipped() const override { return m_clipped; }

private:
    void openContainer(const QString &otherwise);
    void openDecoder();
    void describe();
    void describeAppleLossless();
    bool decodeMore();
    bool nextPacket();
    void append(const AVFrame &frame);
    void openConverter(const AVFrame &frame);
    void noteClipping(const AVFrame &frame);
    bool hasLostAudio() const;
    std::size_t take(std::span<std::uint8_t> buffer);
    bool isAppleLossless() const { return m_dataFormat.formatType == FormatType::AppleLossless; }

    AvIo m_io;
    AvInput m_container;
    AVStream *m_stream = nullptr; // the container's
    AVCodecID m_codecId = AV_CODEC_ID_NONE;
    AvPointer<AVCodecContext> m_decoder;
    AvPointer<AVPacket> m_packet;
    AvPointer<AVFrame> m_frame;
    AvPointer<SwrContext> m_converter;
    std::vector<std::uint8_t> m_converted; // one frame's samples as the converter gives them
    std::vector<std::uint8_t> m_pending;   // in the client format
    std::size_t m_taken = 0;               // of m_pending, in bytes
    std::int64_t m_framesRead = 0;
    std::int64_t m_packetsRead = 0;
    std::int64_t m_packetFrames = 0; // of Apple Lossless
    bool m_clipped = false;
};

} // namespace kruv
