// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "BoxBuilder.h"

namespace kruv::aacplusenc {

void BoxBuilder::box(std::string_view type, const std::function<void()> &content)
{
    const std::size_t start = m_bytes.size();
    u32(0);
    text(type);
    content();
    const std::size_t size = m_bytes.size() - start;
    for (unsigned i = 0; i < 4; ++i) {
        m_bytes[start + i] = static_cast<std::uint8_t>(size >> (24 - 8 * i));
    }
}

void BoxBuilder::fullBox(std::string_view type, unsigned version, std::uint32_t flags,
                         const std::function<void()> &content)
{
    box(type, [&] {
        u8(version);
        number(flags, 3);
        content();
    });
}

void BoxBuilder::bytes(std::span<const std::uint8_t> value)
{
    m_bytes.insert(m_bytes.end(), value.begin(), value.end());
}

void BoxBuilder::number(std::uint64_t value, unsigned size)
{
    while (size-- > 0) {
        m_bytes.push_back(static_cast<std::uint8_t>(value >> (8 * size)));
    }
}

} // namespace kruv::aacplusenc
