// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AvFileOutput.h"

#include "audio/AvHandles.h"

#include <utility>

namespace kruv {

AvFileOutput::AvFileOutput(FileDescriptor file)
    : m_file(std::move(file))
    , m_context(newAvioContext(128 * 1024, this, nullptr, write, seek))
{
}

AvFileOutput::~AvFileOutput()
{
    freeAvioContext(m_context);
}

int AvFileOutput::finish()
{
    avio_flush(m_context);
    const int closed = m_file.close();
    return m_writeError != 0 ? m_writeError : closed;
}

int AvFileOutput::write(void *self, std::uint8_t *bytes, int count)
{
    auto &output = *static_cast<AvFileOutput *>(self);
    const int error = output.m_file.write({bytes, static_cast<std::size_t>(count)});
    if (error != 0 && output.m_writeError == 0) {
        output.m_writeError = error;
    }
    return error != 0 ? error : count;
}

std::int64_t AvFileOutput::seek(void *self, std::int64_t offset, int whence)
{
    FileDescriptor &file = static_cast<AvFileOutput *>(self)->m_file;
    return (whence & AVSEEK_SIZE) != 0 ? file.size() : file.seek(offset, whence & ~AVSEEK_FORCE);
}

} // namespace kruv
