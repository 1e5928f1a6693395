// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "audio/FileDescriptor.h"

struct AVIOContext;

namespace kruv {

/// Part of an open file as FFmpeg's input: a path is never taken for an address or a pattern, and tags around
/// the audio are never seen.
class AvFileInput
{
public:
    /// What lies between the two offsets is the whole input.
    AvFileInput(FileDescriptor file, std::int64_t start, std::int64_t end);
    ~AvFileInput();
    AvFileInput(const AvFileInput &) = delete;
    AvFileInput &operator=(const AvFileInput &) = delete;

    AVIOContext *context() const { return m_context; }
    const FileDescriptor &file() const { return m_file; }

private:
    static int read(void *self, std::uint8_t *bytes, int count);
    static std::int64_t seek(void *self, std::int64_t offset, int whence);

    FileDescriptor m_file;
    const std::int64_t m_start;
    const std::int64_t m_end;
    std::int64_t m_position; // in the file
    AVIOContext *m_context;
};

} // namespace kruv
