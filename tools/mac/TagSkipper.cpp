// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TagSkipper.h"

#include "MacError.h"
#include "common/LittleEndian.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

namespace kruv::mac {

namespace {

/// How far others put things in front of a stream.
constexpr std::size_t searchBytes = std::size_t{1024} * 1024;
constexpr std::size_t id3v1Bytes = 128;
constexpr std::size_t apeFooterBytes = 32;

uint64_t skipId3v2(const RandomInput &input, uint64_t offset)
{
    std::array<uint8_t, 10> header{};
    while (input.readAt(offset, header) == header.size() && std::memcmp(header.data(), "ID3", 3) == 0) {
        uint64_t size = 0;
        for (std::size_t i = 6; i < header.size(); ++i) {
            size = size << 7 | (header[i] & 0x7F);
        }
        const bool hasFooter = header[5] & 0x10;
        offset += header.size() + size + (hasFooter ? header.size() : 0);
    }
    return offset;
}

bool startsStream(const uint8_t *bytes)
{
    const unsigned version = tools::readLe16(bytes + 4);
    return std::memcmp(bytes, "MAC ", 4) == 0 && version >= 3000 && version < 10000;
}

} // namespace

uint64_t findStreamStart(const RandomInput &input)
{
    const uint64_t offset = skipId3v2(input, 0);
    std::array<uint8_t, 6> id{};
    if (input.readAt(offset, id) == id.size() && startsStream(id.data())) {
        return offset;
    }
    std::vector<uint8_t> bytes(searchBytes);
    bytes.resize(input.readAt(offset, bytes));
    for (std::size_t at = 0; at + 6 <= bytes.size(); ++at) {
        if (startsStream(&bytes[at])) {
            return offset + at;
        }
    }
    throw MacError(ErrorNumber::InvalidInput, input.name() + " is not a Monkey's Audio file");
}

uint64_t findStreamEnd(const RandomInput &input)
{
    uint64_t end = input.size();
    std::array<uint8_t, 3> id{};
    if (end >= id3v1Bytes && input.readAt(end - id3v1Bytes, id) == id.size() &&
        std::memcmp(id.data(), "TAG", id.size()) == 0) {
        end -= id3v1Bytes;
    }
    std::array<uint8_t, apeFooterBytes> footer{};
    if (end >= footer.size() && input.readAt(end - footer.size(), footer) == footer.size() &&
        std::memcmp(footer.data(), "APETAGEX", 8) == 0) {
        // The stated size covers items and footer; the top flag tells that a header precedes them.
        const bool hasHeader = tools::readLe32(&footer[20]) & 0x80000000;
        const uint64_t size = uint64_t{tools::readLe32(&footer[12])} + (hasHeader ? apeFooterBytes : 0);
        end -= std::min(end, size);
    }
    return end;
}

} // namespace kruv::mac
