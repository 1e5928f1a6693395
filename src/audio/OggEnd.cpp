// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/OggEnd.h"

#include "audio/FileDescriptor.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <vector>

namespace kruv::OggEnd {

bool isThere(const FileDescriptor &file, std::int64_t end)
{
    constexpr std::int64_t largestPage = 27 + 255 + 255 * 255;
    constexpr std::size_t head = 27;
    constexpr std::string_view mark = "OggS";
    constexpr unsigned lastOfStream = 4;
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(std::min(end, largestPage)));
    if (file.readAt(end - static_cast<std::int64_t>(bytes.size()), bytes) !=
        static_cast<std::int64_t>(bytes.size())) {
        return false;
    }
    const auto found = std::find_end(bytes.begin(), bytes.end(), mark.begin(), mark.end());
    const std::span<const std::uint8_t> page(found, bytes.end());
    if (page.size() < head || page.size() < head + page[26]) {
        return false;
    }
    const auto sizes = page.subspan(head, page[26]);
    const std::size_t size = std::accumulate(sizes.begin(), sizes.end(), head + sizes.size());
    return page.size() >= size && (page[5] & lastOfStream) != 0;
}

} // namespace kruv::OggEnd
