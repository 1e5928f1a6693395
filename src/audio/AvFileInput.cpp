// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvFileInput.h"

#include "audio/AvHandles.h"

#include <algorithm>
#include <utility>

namespace kruv {

AvFileInput::AvFileInput(FileDescriptor file, std::int64_t start, std::int64_t end)
    : m_file(std::move(file))
    , m_start(start)
    , m_end(end)
    , m_position(start)
    , m_context(newAvioContext(32 * 1024, this, read, nullptr, seek))
{
    m_file.readAhead();
}

AvFileInput::~AvFileInput()
{
    freeAvioContext(m_context);
}

int AvFileInput::read(void *self, std::uint8_t *bytes, int count)
{
    auto &input = *static_cast<AvFileInput *>(self);
    const std::int64_t wanted = std::clamp<std::int64_t>(input.m_end - input.m_position, 0, count);
    const std::int64_t got = input.m_file.readAt(input.m_position, {bytes, static_cast<std::size_t>(wanted)});
    input.m_position += std::max<std::int64_t>(got, 0);
    return got == 0 ? AVERROR_EOF : static_cast<int>(got);
}

std::int64_t AvFileInput::seek(void *self, std::int64_t offset, int whence)
{
    auto &input = *static_cast<AvFileInput *>(self);
    if ((whence & AVSEEK_SIZE) != 0) {
        return input.m_end - input.m_start;
    }
    const int from = whence & ~AVSEEK_FORCE;
    const std::int64_t base = from == SEEK_SET   ? input.m_start
                              : from == SEEK_END ? input.m_end
                                                 : input.m_position;
    if (base + offset < input.m_start) {
        return AVERROR(EINVAL);
    }
    input.m_position = base + offset;
    return input.m_position - input.m_start;
}

} // namespace kruv
