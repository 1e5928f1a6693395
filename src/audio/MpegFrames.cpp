// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/MpegFrames.h"

#include "audio/FileHead.h"

#include <algorithm>
#include <array>

namespace kruv::MpegFrames {

namespace {

constexpr std::int64_t searched = 4096; // bytes
constexpr int fewestFrames = 2;
constexpr int fewestBehindJunk = 4;

/// A frame of layers 1 to 3.
std::int64_t layerFrameBytes(std::uint32_t header)
{
    // Kilobits per second: MPEG-1 layers 1 to 3, then the two rows of MPEG-2.
    static constexpr std::array<std::array<int, 16>, 5> bitRates{{
        {0, 32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448, 0},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384, 0},
        {0, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 0},
        {0, 32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256, 0},
        {0, 8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160, 0},
    }};
    static constexpr std::array<int, 4> rates{44'100, 48'000, 32'000, 0};
    const unsigned version = header >> 19 & 3; // 3: MPEG-1, 2: MPEG-2, 0: MPEG-2.5
    const unsigned layer = 4 - (header >> 17 & 3);
    if (header >> 21 != 0x7FF || version == 1 || layer == 4) {
        return 0;
    }
    const std::size_t row = version == 3 ? layer - 1 : layer == 1 ? 3 : 4;
    const std::int64_t bits = bitRates.at(row).at(header >> 12 & 15) * std::int64_t{1000};
    const std::int64_t rate = rates.at(header >> 10 & 3) / (version == 3 ? 1 : version == 2 ? 2 : 4);
    const std::int64_t padding = header >> 9 & 1;
    if (bits == 0 || rate == 0) {
        return 0;
    }
    if (layer == 1) {
        return (12 * bits / rate + padding) * 4;
    }
    return (layer == 3 && version != 3 ? 72 : 144) * bits / rate + padding;
}

std::int64_t adtsFrameBytes(std::uint64_t header) // seven bytes
{
    const bool isAdts = header >> 44 == 0xFFF && (header >> 41 & 3) == 0 && (header >> 34 & 15) < 13;
    const auto size = static_cast<std::int64_t>(header >> 13 & 0x1FFF);
    return isAdts && size >= 7 ? size : 0;
}

struct Frame
{
    std::int64_t bytes = 0;
    std::uint32_t constant = 0; ///< the bits that all frames of a stream share
};

Frame frameAt(FileHead &file, std::int64_t offset, Kind kind)
{
    if (kind == Kind::Adts) {
        const std::uint64_t header = file.bigEndian(offset, 7);
        return {adtsFrameBytes(header), static_cast<std::uint32_t>(header >> 24) & 0xFFFFFDC0};
    }
    const auto header = static_cast<std::uint32_t>(file.bigEndian(offset, 4));
    return {layerFrameBytes(header), header & 0xFFFE0C00};
}

/// Whether so many frames follow each other, or as many as there is room for.
bool framesFollow(FileHead &file, std::int64_t offset, std::int64_t end, Kind kind, int fewest)
{
    const std::uint32_t constant = frameAt(file, offset, kind).constant;
    for (int i = 0; i < fewest; ++i) {
        const Frame frame = frameAt(file, offset, kind);
        if (frame.bytes == 0 || frame.constant != constant) {
            return false;
        }
        offset += frame.bytes;
        if (offset >= end) {
            return fewest == fewestFrames;
        }
    }
    return true;
}

} // namespace

Found find(FileHead &file, std::int64_t start, std::int64_t end)
{
    const std::int64_t last = std::min(end, start + searched);
    for (std::int64_t offset = start; offset < last; ++offset) {
        if (file.bytes(offset, 1).front() != 0xFF) {
            continue;
        }
        for (const Kind kind : {Kind::Adts, Kind::Layers}) {
            if (framesFollow(file, offset, end, kind, offset == start ? fewestFrames : fewestBehindJunk)) {
                return {kind, offset};
            }
        }
    }
    return {};
}

} // namespace kruv::MpegFrames
