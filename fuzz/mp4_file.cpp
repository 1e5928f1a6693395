// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tags/Mp4ChunkOffsets.h"
#include "tags/Mp4File.h"

#include <algorithm>
#include <tbytevectorstream.h>

namespace {

using kruv::Mp4Atom;

/// The byte at the start of each chunk and the one before it, as a player would find them.
std::vector<TagLib::ByteVector> chunkStarts(TagLib::ByteVectorStream &stream)
{
    const auto byteAt = [&](quint64 offset) {
        const bool inside = offset < static_cast<quint64>(stream.length());
        return inside ? stream.data()->mid(static_cast<unsigned int>(offset), 1) : TagLib::ByteVector();
    };
    kruv::Mp4File file(stream);
    std::vector<TagLib::ByteVector> starts;
    for (Mp4Atom &track : file.moov().children) {
        Mp4Atom *table = track.find({"mdia", "minf", "stbl"});
        if (track.name != "trak" || table == nullptr)
            continue;
        for (const Mp4Atom &atom : table->children) {
            if (!kruv::isChunkOffsets(atom))
                continue;
            for (const quint64 offset : kruv::chunkOffsets(atom)) {
                starts.push_back(byteAt(offset));
                starts.push_back(byteAt(offset - 1));
            }
        }
    }
    return starts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const TagLib::ByteVector input(reinterpret_cast<const char *>(data), static_cast<unsigned int>(size));
    TagLib::ByteVectorStream stream(input);
    std::vector<TagLib::ByteVector> before;
    try {
        before = chunkStarts(stream);
        TagLib::ByteVectorStream loose(input);
        try {
            kruv::Mp4File(loose).storeIndex();
        } catch (const kruv::Mp4Error &) {
        }
        kruv::Mp4File(stream).optimize();
    } catch (const kruv::Mp4Error &) {
        // Refusing is the right answer to most inputs, and must leave the file as it was.
        if (*stream.data() != input)
            __builtin_trap();
        return 0;
    }
    // A chunk without samples may stand at the end of an atom whose follower is gone, so that only the byte
    // before it is the same. Fragments have bytes of their own that change.
    const std::vector<TagLib::ByteVector> after = chunkStarts(stream);
    bool same = before.size() == after.size();
    for (std::size_t index = 0; same && index < before.size(); index += 2)
        same = before[index] == after[index] || before[index + 1] == after[index + 1];
    if (!same && input.find("moof") < 0 && input.find("mfra") < 0)
        __builtin_trap();
    // What was compacted once stays as it is.
    const TagLib::ByteVector once = *stream.data();
    kruv::Mp4File(stream).optimize();
    if (*stream.data() != once)
        __builtin_trap();
    return 0;
}
