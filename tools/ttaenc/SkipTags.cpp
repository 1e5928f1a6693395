// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ttaenc/SkipTags.h"

#include "common/InputStream.h"

#include <cstdint>
#include <cstring>

namespace kruv::ttaenc {

void skipId3v2(tools::InputStream &input)
{
    constexpr std::size_t headerBytes = 10;
    constexpr unsigned footerFlag = 0x10;
    for (;;) {
        const auto start = input.peek(headerBytes);
        if (start.size() < headerBytes || std::memcmp(start.data(), "ID3", 3) != 0) {
            return;
        }
        std::uint64_t size = 0;
        for (std::size_t i = 6; i < headerBytes; ++i) {
            size = size << 7 | (start[i] & 0x7Fu);
        }
        input.skip(headerBytes + size + ((start[5] & footerFlag) ? headerBytes : 0));
    }
}

} // namespace kruv::ttaenc
