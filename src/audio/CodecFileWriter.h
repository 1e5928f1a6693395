// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AvFileOutput.h"
#include "audio/AvHandles.h"
#include "audio/ExtAudioFileWriter.h"

#include <QCoreApplication>

#include <optional>
#include <vector>

namespace kruv {

/// Writes Apple Lossless and AAC as MPEG-4 audio, through FFmpeg.
class CodecFileWriter : public ExtAudioFileWriter
{
    Q_DECLARE_TR_FUNCTIONS(kruv::CodecFileWriter)
public:
    CodecFileWriter(const QString &path, const AudioStreamFormat &format);

    void setAacSettings(const AacSettings &settings) override;
    bool setChannelLayout(std::uint32_t mask) override;
    void write(std::span<const std::uint8_t> frames) override;
    void finish() override;

private:
    void chooseEncoder();
    void chooseAppleLossless();
    void chooseAac();
    void begin(bool empty);
    void openEncoder();
    void openContainer(bool empty);
    void openConverter();
    const std::uint8_t *widened(std::span<const std::uint8_t> frames);
    void convert(const std::uint8_t *frames, int count);
    void stopCompressing();
    void encodeFifo(bool all);
    void encode(AVFrame *frame);
    [[noreturn]] void cannotWrite(int code);

    const AudioStreamFormat m_format;
    AvPointer<AVCodecContext> m_encoder;
    std::optional<AvFileOutput> m_io; // made when the encoder is known to fit
    AvOutput m_container;
    AvPointer<SwrContext> m_converter;
    AvPointer<AVAudioFifo> m_fifo;
    AvPointer<AVFrame> m_frame;
    AvPointer<AVPacket> m_packet;
    std::vector<std::uint8_t> m_widened;
    std::int64_t m_position = 0; // frames handed to the encoder
    bool m_begun = false;
};

} // namespace kruv
