// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/InputStream.h"

#include <memory>
#include <string>
#include <sys/types.h>

namespace kruv::dvda {

/// A running flac that decodes one file to a pipe, as WAV. What it has to complain about goes to our standard
/// error.
class FlacDecoder
{
public:
    /// Starts flac from PATH; throws ToolError when that fails.
    explicit FlacDecoder(const std::string &path);
    /// Ends flac if it is still running.
    ~FlacDecoder();
    FlacDecoder(const FlacDecoder &) = delete;
    FlacDecoder &operator=(const FlacDecoder &) = delete;

    tools::InputStream &output() { return *m_output; }
    /// Call at the end of the output: waits for flac, and throws ToolError when it found the file damaged.
    void finish();

private:
    int wait();

    std::string m_path;
    pid_t m_process = -1;
    std::unique_ptr<tools::InputStream> m_output;
};

} // namespace kruv::dvda
