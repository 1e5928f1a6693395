// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/AiffChunks.h"

#include "tags/StreamRead.h"

#include <algorithm>

namespace kruv {

namespace {

constexpr long formHeaderSize = 12;
constexpr long chunkHeaderSize = 8;

bool isChunkId(const TagLib::ByteVector &id)
{
    return std::all_of(id.begin(), id.end(),
                       [](char character) { return character >= 0x20 && character < 0x7F; });
}

} // namespace

bool hasWholeAiffChunks(TagLib::IOStream &stream)
{
    const TagLib::ByteVector form = readAt(stream, 0, formHeaderSize);
    const TagLib::ByteVector kind = form.mid(8, 4);
    if (!form.startsWith("FORM") || (kind != "AIFF" && kind != "AIFC")) {
        return false;
    }
    const long length = stream.length();
    long offset = formHeaderSize;
    bool hasSound = false;
    while (offset + chunkHeaderSize <= length) {
        const TagLib::ByteVector header = readAt(stream, offset, chunkHeaderSize);
        if (!isChunkId(header.mid(0, 4))) {
            return false;
        }
        hasSound = hasSound || header.startsWith("SSND");
        offset += chunkHeaderSize + static_cast<long>(header.toUInt(4U, true));
        if (offset % 2 != 0 && readAt(stream, offset, 1) == TagLib::ByteVector(1, '\0')) {
            ++offset; // the pad byte, which some writers leave out
        }
    }
    return hasSound && offset <= length;
}

} // namespace kruv
