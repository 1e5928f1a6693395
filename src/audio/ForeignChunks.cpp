// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ForeignChunks.h"

#include "audio/AudioError.h"
#include "audio/FileHead.h"

#include <algorithm>
#include <string_view>

namespace kruv::ForeignChunks {

namespace {

using namespace std::string_view_literals;

constexpr std::int64_t headerSize = 8;
constexpr std::int64_t formHeaderSize = 12;

// What says how the audio is stored, padding, and peaks, which can be measured again. AIFF keeps its tags in
// "ID3 ".
constexpr std::string_view plainInWav[] = {"fmt "sv, "data"sv, "fact"sv, "ds64"sv, "JUNK"sv,
                                           "junk"sv, "PAD "sv, "FLLR"sv, "PEAK"sv};
constexpr std::string_view plainInAiff[] = {"COMM"sv, "SSND"sv, "FVER"sv, "CHAN"sv, "PAD "sv,
                                            "FLLR"sv, "PEAK"sv, "ID3 "sv, "id3 "sv};

/// A list that says with which program the file was made, and nothing more.
bool namesProgramOnly(FileHead &file, const Chunk &chunk)
{
    constexpr std::int64_t entry = headerSize + 4;
    return file.has(chunk.offset, "LIST") && file.has(chunk.offset + headerSize, "INFOISFT") &&
           static_cast<std::int64_t>(file.littleEndian(chunk.offset + entry + 4, 4)) + entry + headerSize +
                   1 >=
               chunk.size;
}

std::int64_t sizeOfContent(FileHead &file, std::int64_t offset, bool isAiff, bool is64)
{
    constexpr std::uint64_t inDs64 = 0xFFFFFFFF;
    constexpr std::int64_t dataSizeInDs64 = formHeaderSize + headerSize + 8;
    const std::uint64_t size = isAiff ? file.bigEndian(offset + 4, 4) : file.littleEndian(offset + 4, 4);
    return static_cast<std::int64_t>(
        is64 && size == inDs64 && file.has(offset, "data") ? file.littleEndian(dataSizeInDs64, 8) : size);
}

std::vector<Chunk> foreignIn(FileHead &file)
{
    const bool isAiff = file.has(0, "FORM") && (file.has(8, "AIFF") || file.has(8, "AIFC"));
    const bool is64 = file.has(0, "RF64") || file.has(0, "BW64");
    std::vector<Chunk> found;
    if (!isAiff && !((is64 || file.has(0, "RIFF")) && file.has(8, "WAVE"))) {
        return found;
    }
    const auto isPlain = [&](std::int64_t offset) {
        const auto isHere = [&](std::string_view name) { return file.has(offset, name); };
        return isAiff ? std::ranges::any_of(plainInAiff, isHere) : std::ranges::any_of(plainInWav, isHere);
    };
    for (std::int64_t offset = formHeaderSize; offset + headerSize < file.size();) {
        const std::int64_t content = sizeOfContent(file, offset, isAiff, is64);
        const bool hasName = file.bytes(offset, 1)[0] >= ' ';
        if (!hasName || content < 0 || content > file.size() - offset - headerSize) {
            break; // zeros, audio that goes on to the end, or what was cut off
        }
        const Chunk chunk{.offset = offset, .size = headerSize + content};
        if (!isPlain(offset) && !namesProgramOnly(file, chunk)) {
            found.push_back(chunk);
        }
        offset += headerSize + content + content % 2;
    }
    return found;
}

} // namespace

std::vector<Chunk> of(const QString &path)
try {
    FileHead file(FileDescriptor::openForReading(path));
    return foreignIn(file);
} catch (const AudioError &) {
    return {}; // its job will tell
}

} // namespace kruv::ForeignChunks
