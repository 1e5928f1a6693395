// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FlacPadding.h"

#include "tags/StagedFileStream.h"

#include <id3v2header.h>
#include <tbytevector.h>

namespace kruv {

namespace {

// RFC 9639, section 8.1: one bit "last block", seven of type, then the length of the content in 24 bits.
constexpr long blockHeaderSize = 4;
constexpr long longestBlock = 0xFFFFFF;
constexpr unsigned lastBlockFlag = 0x80;
constexpr unsigned paddingType = 1;
constexpr unsigned commentType = 4;

TagLib::ByteVector readAt(TagLib::IOStream &stream, long offset, unsigned long length)
{
    stream.seek(offset, TagLib::IOStream::Beginning);
    return stream.readBlock(length);
}

long markerOffset(TagLib::IOStream &stream)
{
    const TagLib::ByteVector start = readAt(stream, 0, TagLib::ID3v2::Header::size());
    if (!start.startsWith(TagLib::ID3v2::Header::fileIdentifier())) {
        return 0;
    }
    return static_cast<long>(TagLib::ID3v2::Header(start).completeTagSize());
}

} // namespace

std::optional<FlacMetadata> findFlacMetadata(TagLib::IOStream &stream)
{
    long offset = markerOffset(stream);
    if (readAt(stream, offset, 4) != "fLaC") {
        return std::nullopt;
    }
    offset += 4;
    FlacMetadata metadata;
    while (true) {
        const TagLib::ByteVector header = readAt(stream, offset, blockHeaderSize);
        if (header.size() < blockHeaderSize) {
            return std::nullopt;
        }
        const auto first = static_cast<unsigned char>(header[0]);
        const long next = offset + blockHeaderSize + static_cast<long>(header.toUInt(1U, 3U, true));
        const unsigned type = first & ~lastBlockFlag;
        if (type == commentType && metadata.comments == 0) {
            metadata.comments = offset + blockHeaderSize;
            metadata.commentsLength = next - metadata.comments;
        }
        if ((first & lastBlockFlag) != 0) {
            metadata.end = next;
            metadata.lastBlock = offset;
            metadata.endsWithPadding = type == paddingType;
            return metadata;
        }
        offset = next;
    }
}

void restoreFlacPadding(StagedFileStream &stream, long audioOffset)
{
    const std::optional<FlacMetadata> metadata = findFlacMetadata(stream);
    if (!metadata || !metadata->endsWithPadding) {
        return;
    }
    const long padding = audioOffset - metadata->lastBlock - blockHeaderSize;
    if (padding < 0 || padding > longestBlock || metadata->end == audioOffset) {
        return;
    }
    TagLib::ByteVector block = TagLib::ByteVector::fromUInt(static_cast<unsigned int>(padding));
    block[0] = static_cast<char>(lastBlockFlag | paddingType);
    block.append(TagLib::ByteVector(static_cast<unsigned int>(padding), '\0'));
    stream.insert(block, static_cast<unsigned long>(metadata->lastBlock),
                  static_cast<unsigned long>(metadata->end - metadata->lastBlock));
}

} // namespace kruv
