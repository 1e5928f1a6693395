// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "common/ByteSink.h"

#include <cstdint>
#include <span>
#include <vector>

namespace kruv::mac {

/// Lines coded frames up without gaps and writes them as they lie in a file: in 32-bit words with the bytes
/// reversed.
class FramePacker
{
public:
    explicit FramePacker(tools::ByteSink &sink)
        : m_sink(sink)
    {
    }

    void add(std::span<const uint8_t> frame);
    /// Writes the last word; there is always at least one byte of padding. Returns the number of bytes
    /// written in all.
    uint64_t finish();
    /// Where each frame begins, counted from the first one.
    const std::vector<uint64_t> &frameStarts() const { return m_frameStarts; }

private:
    void writeWords(std::size_t bytes);

    tools::ByteSink &m_sink;
    std::vector<uint8_t> m_pending;
    std::vector<uint64_t> m_frameStarts;
    uint64_t m_size = 0; ///< of all frames so far
};

} // namespace kruv::mac
