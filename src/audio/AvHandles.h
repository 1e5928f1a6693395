// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/AvFunctions.h"

#include <memory>
#include <new>

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

using AvioTransfer = int (*)(void *, std::uint8_t *, int);
using AvioSeek = std::int64_t (*)(void *, std::int64_t, int);

/// For freeAvioContext(). Without `write` it reads.
inline AVIOContext *newAvioContext(int bufferSize, void *self, AvioTransfer read, AvioTransfer write,
                                   AvioSeek seek)
{
    auto *buffer = static_cast<unsigned char *>(av_malloc(static_cast<std::size_t>(bufferSize)));
    AVIOContext *context =
        buffer == nullptr
            ? nullptr
            : avio_alloc_context(buffer, bufferSize, write == nullptr ? 0 : 1, self, read, write, seek);
    if (context == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    return context;
}

inline void freeAvioContext(AVIOContext *context)
{
    av_freep(&context->buffer); // FFmpeg may have replaced the one it was given
    avio_context_free(&context);
}

} // namespace kruv
