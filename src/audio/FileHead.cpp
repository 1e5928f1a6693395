// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/FileHead.h"

#include <algorithm>
#include <utility>

namespace kruv {

namespace {
constexpr std::size_t windowBytes = 4096;
}

FileHead::FileHead(FileDescriptor file)
    : m_file(std::move(file))
    , m_size(std::max<std::int64_t>(m_file.size(), 0))
{
}

std::span<const std::uint8_t> FileHead::bytes(std::int64_t offset, std::size_t count)
{
    const auto wanted = static_cast<std::int64_t>(count);
    const auto held = static_cast<std::int64_t>(m_window.size());
    if (offset < 0 || offset >= m_size) {
        m_padded.assign(count, 0);
        return m_padded;
    }
    if (offset < m_offset || offset + wanted > m_offset + held) {
        m_window.resize(std::max(count, windowBytes));
        const std::int64_t got = m_file.readAt(offset, m_window);
        m_window.resize(static_cast<std::size_t>(std::max<std::int64_t>(got, 0)));
        m_offset = offset;
    }
    const auto found =
        std::span(m_window).subspan(std::min(m_window.size(), static_cast<std::size_t>(offset - m_offset)));
    if (found.size() >= count) {
        return found.first(count);
    }
    m_padded.assign(count, 0);
    std::ranges::copy(found, m_padded.begin());
    return m_padded;
}

bool FileHead::has(std::int64_t offset, std::string_view text)
{
    return std::ranges::equal(bytes(offset, text.size()), text,
                              [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
}

std::uint64_t FileHead::bigEndian(std::int64_t offset, std::size_t count)
{
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes(offset, count)) {
        number = number << 8 | byte;
    }
    return number;
}

std::uint64_t FileHead::littleEndian(std::int64_t offset, std::size_t count)
{
    std::uint64_t number = 0;
    int shift = 0;
    for (const std::uint8_t byte : bytes(offset, count)) {
        number |= std::uint64_t{byte} << shift;
        shift += 8;
    }
    return number;
}

} // namespace kruv
