// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/audio_fifo.h>
#include <libswresample/swresample.h>
}

/// Owners of FFmpeg's objects.
namespace kruv {

struct AvDeleter
{
    void operator()(AVCodecContext *codec) const { avcodec_free_context(&codec); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(SwrContext *converter) const { swr_free(&converter); }
    void operator()(AVAudioFifo *fifo) const { av_audio_fifo_free(fifo); }
};

struct AvInputDeleter
{
    void operator()(AVFormatContext *format) const { avformat_close_input(&format); }
};

struct AvOutputDeleter
{
    void operator()(AVFormatContext *format) const { avformat_free_context(format); }
};

template <typename T> using AvPointer = std::unique_ptr<T, AvDeleter>;
using AvInput = std::unique_ptr<AVFormatContext, AvInputDeleter>;
using AvOutput = std::unique_ptr<AVFormatContext, AvOutputDeleter>;

} // namespace kruv
