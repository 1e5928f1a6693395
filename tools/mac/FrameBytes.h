// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "RandomInput.h"

#include <array>
#include <cstdint>

namespace kruv::mac {

/// The bytes of one frame in coding order. In the file they lie in 32-bit words with the bytes reversed,
/// counted from the start of all frame data, not from the start of the frame.
class FrameBytes
{
public:
    /// `dataStart` is where the file's frame data starts; the frame is [begin, end) in the file's numbering.
    FrameBytes(const RandomInput &input, uint64_t dataStart, uint64_t begin, uint64_t end);

    /// Goes back to the first byte.
    void rewind();
    /// The next byte; zeros for ever beyond what may be read.
    uint8_t next() { return *m_next++; }
    /// Must be called before each run of at most `stride` calls of next(). Throws MacError when the frame
    /// ended long ago.
    void prepare()
    {
        if (m_next > m_refillMark) {
            refill();
        }
    }

    static constexpr std::size_t stride = 64;

private:
    void fill(uint64_t logicalStart);
    void refill();

    const RandomInput &m_input;
    uint64_t m_dataStart;
    uint64_t m_begin;
    uint64_t m_end;
    uint64_t m_windowStart = 0; ///< logical position of m_window[0], a multiple of 4
    const uint8_t *m_next = nullptr;
    const uint8_t *m_refillMark = nullptr;
    std::array<uint8_t, 32768> m_window;
};

} // namespace kruv::mac
