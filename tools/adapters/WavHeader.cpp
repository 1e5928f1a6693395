// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "WavHeader.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kruv::adapters {

namespace {

constexpr unsigned pcmTag = 0x0001;
constexpr unsigned extensibleTag = 0xFFFE;
constexpr std::size_t plainFormatSize = 16;
constexpr std::size_t extensibleFormatSize = 40;
constexpr std::size_t channelsAt = 2;
constexpr std::size_t rateAt = 4;
constexpr std::size_t frameSizeAt = 12;
constexpr std::size_t bitsAt = 14;
constexpr std::size_t subFormatAt = 24;

// The sub-format's last 14 bytes, the same for all tags that the plain form has too.
constexpr std::string_view subFormatTail("\x00\x00\x00\x00\x10\x00\x80\x00\x00\xAA\x00\x38\x9B\x71", 14);

// Speaker masks by number of channels, the ones lossless coders expect.
constexpr std::array<std::uint32_t, 9> speakerMasks{0, 0x4, 0x3, 0x7, 0x33, 0x37, 0x3F, 0x70F, 0x63F};

unsigned number16(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]) |
           static_cast<unsigned>(static_cast<unsigned char>(bytes[at + 1])) << 8;
}

std::uint32_t number32(std::string_view bytes, std::size_t at)
{
    return number16(bytes, at) | static_cast<std::uint32_t>(number16(bytes, at + 2)) << 16;
}

std::string bytesOf(std::uint32_t value, std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i, value >>= 8) {
        bytes += static_cast<char>(value & 0xFF);
    }
    return bytes;
}

} // namespace

std::optional<WavHeader> WavHeader::parse(std::string_view start)
{
    constexpr std::size_t chunkHead = 8;
    if (start.size() < 12 || !start.starts_with("RIFF") || start.substr(8, 4) != "WAVE") {
        return std::nullopt;
    }
    WavHeader header;
    for (std::size_t at = 12; at + chunkHead <= start.size();) {
        const auto name = start.substr(at, 4);
        const std::size_t size = number32(start, at + 4);
        at += chunkHead;
        if (name == "data") {
            header.data = at;
            header.dataSize = static_cast<std::uint32_t>(size);
            return header.format != 0 ? std::optional(header) : std::nullopt;
        }
        if (name == "fmt " && size >= plainFormatSize && at + size <= start.size()) {
            header.format = at;
            header.formatSize = size;
            header.rate = number32(start, at + rateAt);
            header.frameSize = number16(start, at + frameSizeAt);
        }
        at += size + size % 2;
    }
    return std::nullopt;
}

bool WavHeader::statesLength() const
{
    return dataSize != 0 && dataSize < 0xFFFFFF00 && (dataSize < 0x7FFFF000 || dataSize > 0x80000000);
}

std::string WavHeader::withDataSize(std::string start, std::uint32_t size) const
{
    constexpr std::size_t number = 4;
    constexpr std::size_t riffHead = 8;
    const auto riffSize = static_cast<std::uint64_t>(data) + size - riffHead;
    start.replace(data - number, number, bytesOf(size, number));
    start.replace(number, number,
                  bytesOf(static_cast<std::uint32_t>(std::min<std::uint64_t>(riffSize, UINT32_MAX)), number));
    return start;
}

bool isExtensiblePcm(std::string_view start)
{
    const auto header = WavHeader::parse(start);
    return header && header->formatSize >= extensibleFormatSize &&
           number16(start, header->format) == extensibleTag &&
           number16(start, header->format + subFormatAt) == pcmTag &&
           start.substr(header->format + subFormatAt + 2, subFormatTail.size()) == subFormatTail;
}

std::string plainHeader(std::string start)
{
    if (isExtensiblePcm(start)) {
        start.replace(WavHeader::parse(start)->format, 2, bytesOf(pcmTag, 2));
    }
    return start;
}

std::string extensibleHeader(std::string start)
{
    const auto header = WavHeader::parse(start);
    if (!header || number16(start, header->format) != pcmTag) {
        return start;
    }
    const unsigned channels = number16(start, header->format + channelsAt);
    if (channels <= 2) {
        return start;
    }
    const auto mask = channels < speakerMasks.size() ? speakerMasks[channels] : 0;
    auto format =
        bytesOf(extensibleTag, 2) + start.substr(header->format + channelsAt, plainFormatSize - channelsAt) +
        bytesOf(extensibleFormatSize - plainFormatSize - 2, 2) + start.substr(header->format + bitsAt, 2) +
        bytesOf(mask, 4) + bytesOf(pcmTag, 2) + std::string(subFormatTail);
    const auto oldSize = header->formatSize + header->formatSize % 2;
    const auto fileSize = number32(start, 4);
    start.replace(header->format, oldSize, format);
    start.replace(header->format - 4, 4, bytesOf(extensibleFormatSize, 4));
    // A size that was never filled in (a stream) stays so.
    const auto grown = static_cast<std::uint64_t>(fileSize) + extensibleFormatSize - oldSize;
    if (fileSize != 0 && grown < UINT32_MAX && fileSize < UINT32_MAX - 1024) {
        start.replace(4, 4, bytesOf(static_cast<std::uint32_t>(grown), 4));
    }
    return start;
}

} // namespace kruv::adapters
