// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/FileDescriptor.h"

struct AVIOContext;

namespace kruv {

/// An open file as FFmpeg's output, so that no path is ever taken for an address or a pattern.
class AvFileOutput
{
public:
    explicit AvFileOutput(FileDescriptor file);
    ~AvFileOutput();
    AvFileOutput(const AvFileOutput &) = delete;
    AvFileOutput &operator=(const AvFileOutput &) = delete;

    AVIOContext *context() const { return m_context; }
    /// Writes what is buffered and closes. 0, or the first -errno of anything that could not be written.
    int finish();
    /// The first -errno of a failed write, also when FFmpeg went on; 0 where there was none.
    int writeError() const { return m_writeError; }

private:
    static int write(void *self, std::uint8_t *bytes, int count);
    static std::int64_t seek(void *self, std::int64_t offset, int whence);

    FileDescriptor m_file;
    AVIOContext *m_context;
    int m_writeError = 0;
};

} // namespace kruv
