// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ContainedCodec.h"

#include "audio/FileHead.h"
#include "audio/Mp4Codec.h"

#include <array>
#include <numeric>
#include <string_view>

namespace kruv::ContainedCodec {

namespace {

using Codec = AudioContent::Codec;
using Container = AudioContent::Container;

// More chunks or pages than stand before the description of any audio; keeps damage from costing time.
constexpr int mostPieces = 1000;

/// By the format tag of RIFF and of all that took it over.
Codec ofFormatTag(std::uint64_t tag)
{
    switch (tag) {
    case 1:
        return Codec::Pcm;
    case 3:
        return Codec::FloatPcm;
    case 0x50:
    case 0x55:
        return Codec::Mp3;
    case 0xFF:
        return Codec::Aac;
    case 0x163:
        return Codec::WmaLossless;
    default:
        return Codec::Other;
    }
}

/// Of a format chunk's content in low-byte-first order.
Codec ofWaveFormat(FileHead &file, std::int64_t offset)
{
    constexpr std::uint64_t extensible = 0xFFFE;
    const std::uint64_t tag = file.littleEndian(offset, 2);
    return ofFormatTag(tag == extensible ? file.littleEndian(offset + 24, 2) : tag);
}

Codec inRiff(FileHead &file)
{
    const bool highFirst = file.has(0, "RIFX");
    const auto number = [&](std::int64_t offset, std::size_t count) {
        return highFirst ? file.bigEndian(offset, count) : file.littleEndian(offset, count);
    };
    std::int64_t offset = 12;
    for (int i = 0; i < mostPieces && offset < file.size(); ++i) {
        if (file.has(offset, "fmt ")) {
            return highFirst ? ofFormatTag(number(offset + 8, 2)) : ofWaveFormat(file, offset + 8);
        }
        const auto size = static_cast<std::int64_t>(number(offset + 4, 4));
        offset += 8 + size;
        // Some writers leave the byte out that an odd chunk is filled up with.
        offset += file.has(offset, "fmt ") ? 0 : size % 2;
    }
    return Codec::Unknown;
}

Codec inWave64(FileHead &file)
{
    std::int64_t offset = 40; // two identifiers of 16 bytes and a size
    for (int i = 0; i < mostPieces && offset < file.size(); ++i) {
        if (file.has(offset, "fmt ")) {
            return ofWaveFormat(file, offset + 24);
        }
        const auto size = static_cast<std::int64_t>(file.littleEndian(offset + 16, 8));
        if (size < 24 || size > file.size()) {
            break;
        }
        offset += (size + 7) / 8 * 8;
    }
    return Codec::Unknown;
}

Codec inAifc(FileHead &file)
{
    constexpr std::array<std::string_view, 6> integers{"NONE", "twos", "sowt", "in24", "in32", "raw "};
    constexpr std::array<std::string_view, 4> floats{"fl32", "FL32", "fl64", "FL64"};
    std::int64_t offset = 12;
    for (int i = 0; i < mostPieces && offset < file.size(); ++i) {
        if (file.has(offset, "COMM")) {
            const auto is = [&](std::string_view type) { return file.has(offset + 26, type); };
            return std::ranges::any_of(integers, is) ? Codec::Pcm
                   : std::ranges::any_of(floats, is) ? Codec::FloatPcm
                                                     : Codec::Other;
        }
        const auto size = static_cast<std::int64_t>(file.bigEndian(offset + 4, 4));
        offset += 8 + size + size % 2;
    }
    return Codec::Unknown;
}

Codec inCaf(FileHead &file)
{
    if (!file.has(8, "desc")) {
        return Codec::Unknown; // it has to come first
    }
    constexpr std::int64_t format = 28;
    if (file.has(format, "lpcm")) {
        return (file.bigEndian(format + 4, 4) & 1) != 0 ? Codec::FloatPcm : Codec::Pcm;
    }
    return file.has(format, "alac")   ? Codec::AppleLossless
           : file.has(format, "aac ") ? Codec::Aac
           : file.has(format, "flac") ? Codec::Flac
           : file.has(format, "opus") ? Codec::Opus
           : file.has(format, ".mp3") ? Codec::Mp3
                                      : Codec::Other;
}

Codec inAsf(FileHead &file)
{
    constexpr std::string_view streamProperties(
        "\x91\x07\xDC\xB7\xB7\xA9\xCF\x11\x8E\xE6\x00\xC0\x0C\x20\x53\x65", 16);
    constexpr std::string_view audio("\x40\x9E\x69\xF8\x4D\x5B\xCF\x11\xA8\xFD\x00\x80\x5F\x5C\x44\x2B", 16);
    const auto end = static_cast<std::int64_t>(file.littleEndian(16, 8));
    std::int64_t offset = 30;
    for (int i = 0; i < mostPieces && offset < end; ++i) {
        if (file.has(offset, streamProperties) && file.has(offset + 24, audio)) {
            return ofFormatTag(file.littleEndian(offset + 78, 2));
        }
        const auto size = static_cast<std::int64_t>(file.littleEndian(offset + 16, 8));
        if (size < 24 || size > file.size()) {
            break;
        }
        offset += size;
    }
    return Codec::Unknown;
}

} // namespace

Codec in(FileHead &file, Container container)
{
    switch (container) {
    case Container::Wave64:
        return inWave64(file);
    case Container::Aifc:
        return inAifc(file);
    case Container::Caf:
        return inCaf(file);
    case Container::Asf:
        return inAsf(file);
    case Container::Mp4:
        return Mp4Codec::in(file);
    default:
        return inRiff(file);
    }
}

Codec inOgg(FileHead &file, std::int64_t start)
{
    constexpr std::uint64_t beginsStream = 2;
    bool isOgg = false;
    for (int i = 0; i < mostPieces && file.has(start, "OggS"); ++i) {
        if ((file.bigEndian(start + 5, 1) & beginsStream) == 0) {
            break;
        }
        isOgg = true;
        const auto segments = static_cast<std::size_t>(file.bigEndian(start + 26, 1));
        const auto sizes = file.bytes(start + 27, segments);
        const std::int64_t size = std::accumulate(sizes.begin(), sizes.end(), std::int64_t{0});
        const std::int64_t packet = start + 27 + static_cast<std::int64_t>(segments);
        if (file.has(packet, "\x01vorbis")) {
            return Codec::Vorbis;
        }
        if (file.has(packet, "OpusHead")) {
            return Codec::Opus;
        }
        if (file.has(packet, "\x7F"
                             "FLAC")) {
            return Codec::Flac;
        }
        start = packet + size;
    }
    return isOgg ? Codec::Other : Codec::Unknown;
}

} // namespace kruv::ContainedCodec
