// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kruv::tools {

/// Keeps bytes that must be written after others that are not known yet: the first megabytes in memory, more
/// of them in a nameless file, which goes away with the process. Failures throw ToolError.
class SpoolFile : public ByteSink
{
public:
    /// folder is for the file.
    explicit SpoolFile(std::string folder = temporaryFolder());
    ~SpoolFile() override;
    SpoolFile(const SpoolFile &) = delete;
    SpoolFile &operator=(const SpoolFile &) = delete;

    void write(std::span<const std::uint8_t> bytes) override;
    /// Everything written so far, in order.
    void copyTo(ByteSink &sink);
    /// Bytes written so far.
    std::uint64_t size() const { return m_size; }
    /// Puts everything into the file and hands its descriptor over; nothing else may follow.
    int release();

private:
    static std::string temporaryFolder();
    void openFile();
    void spill();

    const std::string m_folder;
    std::vector<std::uint8_t> m_memory; ///< what is not in the file yet
    std::uint64_t m_size = 0;
    int m_descriptor = -1;
};

} // namespace kruv::tools
