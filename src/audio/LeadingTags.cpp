// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/LeadingTags.h"

#include "audio/FileHead.h"

namespace kruv {

std::int64_t LeadingTags::end(FileHead &file)
{
    constexpr std::int64_t id3Head = 10;
    constexpr std::uint64_t id3Footer = 0x10;
    constexpr std::int64_t apeHead = 32;
    std::int64_t start = 0;
    for (;;) {
        if (file.has(start, "ID3")) {
            std::int64_t size = 0;
            const std::uint64_t coded = file.bigEndian(start + 6, 4);
            for (int shift = 24; shift >= 0; shift -= 8) {
                size = size << 7 | static_cast<std::int64_t>(coded >> shift & 0x7F);
            }
            const bool footer = (file.bigEndian(start + 5, 1) & id3Footer) != 0;
            start += id3Head + size + (footer ? id3Head : 0);
        } else if (file.has(start, "APETAGEX")) {
            start += apeHead + static_cast<std::int64_t>(file.littleEndian(start + 12, 4));
        } else {
            return start;
        }
    }
}

} // namespace kruv
