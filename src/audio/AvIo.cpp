// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvIo.h"

#include <new>
#include <utility>

extern "C" {
#include <libavformat/avio.h>
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

namespace kruv {

namespace {
constexpr int bufferSize = 128 * 1024;
}

AvIo::AvIo(FileDescriptor file, Direction direction)
    : m_file(std::move(file))
    , m_context(nullptr)
{
    auto *buffer = static_cast<unsigned char *>(av_malloc(bufferSize));
    const bool writes = direction == Direction::Write;
    m_context = buffer == nullptr
                    ? nullptr
                    : avio_alloc_context(buffer, bufferSize, writes ? 1 : 0, this, writes ? nullptr : read,
                                         writes ? write : nullptr, seek);
    if (m_context == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
}

AvIo::~AvIo()
{
    av_freep(&m_context->buffer); // FFmpeg may have replaced the one it was given
    avio_context_free(&m_context);
}

int AvIo::finish()
{
    avio_flush(m_context);
    const int closed = m_file.close();
    return m_writeError != 0 ? m_writeError : closed;
}

int AvIo::read(void *self, std::uint8_t *bytes, int count)
{
    const std::int64_t got = static_cast<AvIo *>(self)->m_file.read({bytes, static_cast<std::size_t>(count)});
    return got == 0 ? AVERROR_EOF : static_cast<int>(got);
}

int AvIo::write(void *self, std::uint8_t *bytes, int count)
{
    auto &io = *static_cast<AvIo *>(self);
    const int error = io.m_file.write({bytes, static_cast<std::size_t>(count)});
    if (error != 0 && io.m_writeError == 0) {
        io.m_writeError = error;
    }
    return error != 0 ? error : count;
}

std::int64_t AvIo::seek(void *self, std::int64_t offset, int whence)
{
    FileDescriptor &file = static_cast<AvIo *>(self)->m_file;
    return (whence & AVSEEK_SIZE) != 0 ? file.size() : file.seek(offset, whence & ~AVSEEK_FORCE);
}

} // namespace kruv
