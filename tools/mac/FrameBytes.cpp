// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FrameBytes.h"

#include "MacError.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>

namespace kruv::mac {

FrameBytes::FrameBytes(const RandomInput &input, uint64_t dataStart, uint64_t begin, uint64_t end)
    : m_input(input)
    , m_dataStart(dataStart)
    , m_begin(begin - dataStart)
    , m_end(end - dataStart)
{
    rewind();
}

void FrameBytes::rewind()
{
    fill(m_begin);
}

void FrameBytes::fill(uint64_t logicalStart)
{
    m_windowStart = logicalStart & ~uint64_t{3};
    // The decoder looks a few bytes ahead; what the last word holds beyond the frame does no harm.
    const uint64_t wanted = std::min<uint64_t>(((m_end + 3) & ~uint64_t{3}) - m_windowStart, m_window.size());
    const std::size_t got = m_input.readAt(m_dataStart + m_windowStart,
                                           std::span(m_window).first(static_cast<std::size_t>(wanted)));
    std::fill(m_window.begin() + static_cast<std::ptrdiff_t>(got), m_window.end(), uint8_t{0});
    for (std::size_t i = 0; i < got; i += 4) {
        uint32_t word = 0;
        std::memcpy(&word, &m_window[i], 4);
        word = __builtin_bswap32(word);
        std::memcpy(&m_window[i], &word, 4);
    }
    m_next = m_window.data() + (logicalStart - m_windowStart);
    // Damaged frames must not run on through the zeros.
    const uint64_t limit = m_end + stride - m_windowStart;
    m_refillMark = m_window.data() + std::min<uint64_t>(m_window.size() - stride, limit);
}

void FrameBytes::refill()
{
    const uint64_t position = m_windowStart + static_cast<uint64_t>(m_next - m_window.data());
    if (position > m_end + stride) {
        throw MacError(ErrorNumber::DecodingFrame, "a frame needs more data than it has");
    }
    fill(std::min(position, m_end));
}

} // namespace kruv::mac
