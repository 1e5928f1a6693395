// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kruv::tools {

/// An output that appears under its name only when it is complete.
///
/// The bytes go to a temporary file in the same folder; commit() gives it the final name, replacing a file
/// that is there. Without commit() (an exception, SIGTERM, SIGINT, SIGHUP) the temporary file is removed and
/// what stood under the final name is untouched. "-" is standard output; that and names of devices and pipes
/// are written directly. Every failure, the full disk and the broken pipe included, throws ToolError.
class OutputFile : public ByteSink
{
public:
    explicit OutputFile(const std::string &path);
    ~OutputFile() override;
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    void write(std::span<const std::uint8_t> bytes) override;
    /// Replaces bytes already written; only where canRewrite().
    void rewrite(std::uint64_t offset, std::span<const std::uint8_t> bytes);
    bool canRewrite() const { return !m_temporaryPath.empty(); }
    /// Bytes written so far.
    std::uint64_t position() const { return m_position; }
    /// Writes what is buffered, closes, and gives the file its name. Call once, last.
    void commit();

private:
    void openTemporary();
    void openDirectly();
    void flush();
    void close();
    [[noreturn]] void fail(const char *action) const;

    std::string m_finalPath;
    std::string m_temporaryPath;
    int m_descriptor = -1;
    std::uint64_t m_position = 0;
    std::vector<std::uint8_t> m_buffer;
};

} // namespace kruv::tools
