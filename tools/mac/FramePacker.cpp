// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "FramePacker.h"

#include <algorithm>

namespace kruv::mac {

void FramePacker::add(std::span<const uint8_t> frame)
{
    m_frameStarts.push_back(m_size);
    m_size += frame.size();
    m_pending.insert(m_pending.end(), frame.begin(), frame.end());
    writeWords(m_pending.size() & ~std::size_t{3});
}

uint64_t FramePacker::finish()
{
    m_pending.resize(4, 0);
    writeWords(4);
    return (m_size / 4 + 1) * 4;
}

void FramePacker::writeWords(std::size_t bytes)
{
    const auto end = m_pending.begin() + static_cast<std::ptrdiff_t>(bytes);
    for (auto word = m_pending.begin(); word != end; word += 4) {
        std::reverse(word, word + 4);
    }
    m_sink.write(std::span<const uint8_t>(m_pending).first(bytes));
    m_pending.erase(m_pending.begin(), end);
}

} // namespace kruv::mac
