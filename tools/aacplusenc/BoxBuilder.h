// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace kruv::aacplusenc {

/// Builds nested ISO base media boxes (ISO/IEC 14496-12) in memory; all integers are big-endian.
class BoxBuilder
{
public:
    /// Appends a box of the four-character @p type whose content is what @p content appends.
    void box(std::string_view type, const std::function<void()> &content);

    /// The same for a box that starts with a version byte and 24 bits of flags.
    void fullBox(std::string_view type, unsigned version, std::uint32_t flags,
                 const std::function<void()> &content);

    void u8(unsigned value) { number(value, 1); }
    void u16(unsigned value) { number(value, 2); }
    void u32(std::uint64_t value) { number(value, 4); }
    void u64(std::uint64_t value) { number(value, 8); }
    /// 64 bits when @p wide is set, 32 bits otherwise.
    void u32or64(std::uint64_t value, bool wide) { number(value, wide ? 8 : 4); }
    void zeros(std::size_t count) { m_bytes.resize(m_bytes.size() + count); }
    void text(std::string_view value) { m_bytes.insert(m_bytes.end(), value.begin(), value.end()); }
    void bytes(std::span<const std::uint8_t> value);

    const std::vector<std::uint8_t> &data() const { return m_bytes; }

private:
    void number(std::uint64_t value, unsigned size);

    std::vector<std::uint8_t> m_bytes;
};

} // namespace kruv::aacplusenc
