// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tags/FlacPadding.h"

#include "tags/FlacBlock.h"
#include "tags/StagedFileStream.h"
#include "tags/StreamRead.h"

#include <id3v2header.h>

namespace kruv {

namespace {

// RFC 9639, section 8.1: one bit "last block", seven of type, then the length of the content in 24 bits.
constexpr long blockHeaderSize = 4;
constexpr unsigned lastBlockFlag = 0x80;
constexpr unsigned paddingType = 1;
constexpr unsigned commentType = 4;
constexpr unsigned pictureType = 6;

long markerOffset(TagLib::IOStream &stream)
{
    const TagLib::ByteVector start = readAt(stream, 0, TagLib::ID3v2::Header::size());
    if (!start.startsWith(TagLib::ID3v2::Header::fileIdentifier())) {
        return 0;
    }
    return static_cast<long>(TagLib::ID3v2::Header(start).completeTagSize());
}

struct Block
{
    long offset;
    long next;
    unsigned type;
    bool isLast;
};

std::optional<Block> blockAt(TagLib::IOStream &stream, long offset)
{
    const TagLib::ByteVector header = readAt(stream, offset, blockHeaderSize);
    if (header.size() < blockHeaderSize) {
        return std::nullopt;
    }
    const auto first = static_cast<unsigned char>(header[0]);
    return Block{offset, offset + blockHeaderSize + static_cast<long>(header.toUInt(1U, 3U, true)),
                 first & ~lastBlockFlag, (first & lastBlockFlag) != 0};
}

std::optional<Block> firstBlock(TagLib::IOStream &stream)
{
    const long offset = markerOffset(stream);
    return readAt(stream, offset, 4) == "fLaC" ? blockAt(stream, offset + 4) : std::nullopt;
}

} // namespace

std::optional<FlacMetadata> findFlacMetadata(TagLib::IOStream &stream)
{
    std::optional<Block> block = firstBlock(stream);
    while (block && !block->isLast) {
        block = blockAt(stream, block->next);
    }
    if (!block) {
        return std::nullopt;
    }
    return FlacMetadata{block->next, block->offset, block->type == paddingType};
}

std::vector<FlacSpan> findLastingParts(TagLib::IOStream &stream)
{
    constexpr long leastLength = 4096; // shorter ones are not worth a part of their own
    std::vector<FlacSpan> parts;
    const auto addPicture = [&parts](const Block &block) {
        const long content = block.offset + blockHeaderSize;
        if (block.type == pictureType && block.next - content >= leastLength) {
            parts.push_back({content, block.next - content});
        }
    };
    std::optional<Block> block = firstBlock(stream);
    while (block && !block->isLast) {
        addPicture(*block);
        block = blockAt(stream, block->next);
    }
    if (!block || block->next > stream.length()) {
        return {};
    }
    addPicture(*block);
    parts.push_back({block->next, stream.length() - block->next});
    return parts;
}

TagLib::ByteVector readFlacComments(TagLib::IOStream &stream)
{
    std::optional<Block> block = firstBlock(stream);
    while (block && block->type != commentType) {
        block = block->isLast ? std::nullopt : blockAt(stream, block->next);
    }
    if (!block) {
        return {};
    }
    const long content = block->offset + blockHeaderSize;
    return readAt(stream, content, static_cast<unsigned long>(block->next - content));
}

void restoreFlacPadding(StagedFileStream &stream, long audioOffset)
{
    const std::optional<FlacMetadata> metadata = findFlacMetadata(stream);
    if (!metadata || !metadata->endsWithPadding) {
        return;
    }
    const long padding = audioOffset - metadata->lastBlock - blockHeaderSize;
    if (padding < 0 || padding > longestFlacBlock || metadata->end == audioOffset) {
        return;
    }
    TagLib::ByteVector block = TagLib::ByteVector::fromUInt(static_cast<unsigned int>(padding));
    block[0] = static_cast<char>(lastBlockFlag | paddingType);
    block.append(TagLib::ByteVector(static_cast<unsigned int>(padding), '\0'));
    stream.insert(block, static_cast<unsigned long>(metadata->lastBlock),
                  static_cast<unsigned long>(metadata->end - metadata->lastBlock));
}

} // namespace kruv
