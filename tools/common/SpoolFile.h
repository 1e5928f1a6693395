// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <cstdint>
#include <vector>

namespace kruv::tools {

/// Keeps bytes that must be written after others that are not known yet: the first megabytes in memory, more
/// of them in a nameless file in TMPDIR (or /tmp), which goes away with the process.
class SpoolFile : public ByteSink
{
public:
    SpoolFile() = default;
    ~SpoolFile() override;
    SpoolFile(const SpoolFile &) = delete;
    SpoolFile &operator=(const SpoolFile &) = delete;

    void write(std::span<const std::uint8_t> bytes) override;
    /// Everything written so far, in order.
    void copyTo(ByteSink &sink);

private:
    void openFile();
    void spill();

    std::vector<std::uint8_t> m_memory; ///< what is not in the file yet
    int m_descriptor = -1;
};

} // namespace kruv::tools
