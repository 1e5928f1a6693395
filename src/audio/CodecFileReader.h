// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AvHandles.h"
#include "audio/AvSource.h"
#include "audio/ExtAudioFileReader.h"
#include "audio/PcmDigest.h"
#include "audio/SampleConverter.h"

#include <exception>
#include <optional>
#include <vector>

namespace kruv {

/// What FFmpeg's demuxers and decoders read: every kind of audio file but plain integer PCM in the common
/// files.
class CodecFileReader : public ExtAudioFileReader
{
    Q_DECLARE_TR_FUNCTIONS(kruv::AudioFiles)

public:
    /// `otherwise` is said of a file that its demuxer does not know.
    CodecFileReader(const QString &path, const AudioContent &content, const QString &otherwise);

    std::size_t read(std::span<std::uint8_t> buffer) override;
    bool hasClipped() const override
    {
        return m_dataFormat.isFloatingPoint() && m_converter && m_converter->hasClipped();
    }
    QByteArray statedDigest() const override { return m_digest ? m_statedDigest : QByteArray(); }
    QString decoder() const override;

private:
    void openDecoder();
    void decodeFirst();
    void describe();
    void describeSamples();
    void describeAppleLossless();
    void prepareDigest();
    void digest(const AVFrame &frame);
    bool decodeMore();
    bool decodeFrame();
    void append(const AVFrame &frame);
    void checkEnd();
    void checkLength() const;
    void dropLeading();
    std::size_t take(std::span<std::uint8_t> buffer);
    bool isAppleLossless() const { return m_dataFormat.formatType == FormatType::AppleLossless; }
    bool isLossy() const { return m_source.content().kind == AudioContent::Kind::Lossy; }

    const QString m_path;
    AvSource m_source;
    AvPointer<AVCodecContext> m_decoder;
    AvPointer<AVPacket> m_packet;
    AvPointer<AVFrame> m_frame;
    bool m_holdsFirst = false; // m_frame is decoded and not yet taken
    // Said when the audio is read; what the headers tell is told without it.
    std::exception_ptr m_firstFailure;
    std::optional<SampleConverter> m_converter;
    std::vector<std::uint8_t> m_pending; // in the client format
    std::size_t m_taken = 0;             // of m_pending, in bytes
    std::int64_t m_framesRead = 0;
    std::int64_t m_packetFrames = 0;   // of Apple Lossless
    std::int64_t m_leading = 0;        // frames still to be cut off before the audio
    bool m_lengthIsExact = false;      // of a lossy codec
    std::optional<PcmDigest> m_digest; // of FLAC that holds one
    QByteArray m_statedDigest;
};

} // namespace kruv
