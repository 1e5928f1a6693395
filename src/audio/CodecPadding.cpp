// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CodecPadding.h"

#include "audio/FileHead.h"

#include <algorithm>
#include <string_view>

namespace kruv {

namespace {

using Container = AudioContent::Container;

/// What the encoder's tag in the first frame of an MP3 file says, when it is of a kind that FFmpeg believes.
CodecPadding ofMp3(FileHead &file, std::int64_t start)
{
    constexpr std::int64_t decoderDelay = 529;
    constexpr unsigned hasFrames = 1;
    const std::uint64_t header = file.bigEndian(start, 4);
    const bool isMpeg1 = (header >> 19 & 3) == 3;
    const bool isMono = (header >> 6 & 3) == 3;
    std::int64_t offset = start + 4 + (isMpeg1 ? (isMono ? 17 : 32) : (isMono ? 9 : 17));
    if (!file.has(offset, "Xing") && !file.has(offset, "Info")) {
        return {};
    }
    const auto flags = static_cast<unsigned>(file.bigEndian(offset + 4, 4));
    offset +=
        8 + (flags & hasFrames ? 4 : 0) + (flags & 2 ? 4 : 0) + (flags & 4 ? 100 : 0) + (flags & 8 ? 4 : 0);
    if ((flags & hasFrames) == 0 ||
        !(file.has(offset, "LAME") || file.has(offset, "Lavf") || file.has(offset, "Lavc"))) {
        return {};
    }
    const auto both = static_cast<std::int64_t>(file.bigEndian(offset + 21, 3));
    const std::int64_t end = both & 0xFFF;
    return {.counted = (both >> 12) + decoderDelay + std::max<std::int64_t>(0, end - decoderDelay)};
}

/// A number of Musepack's: seven bits a byte, the high one set in all but the last.
std::int64_t takeNumber(FileHead &file, std::int64_t &offset)
{
    std::int64_t number = 0;
    for (int i = 0; i < 8; ++i) {
        const std::uint64_t byte = file.bigEndian(offset++, 1);
        number = number << 7 | static_cast<std::int64_t>(byte & 0x7F);
        if ((byte & 0x80) == 0) {
            break;
        }
    }
    return number;
}

CodecPadding ofMusepack(FileHead &file, std::int64_t start)
{
    constexpr std::int64_t decoderDelay = 481;
    std::int64_t offset = start + 4;
    if (!file.has(offset, "SH")) {
        return {}; // it has to come first
    }
    offset += 2;
    takeNumber(file, offset); // the packet's size
    offset += 4 + 1;          // checksum, version
    const std::int64_t frames = takeNumber(file, offset);
    const std::int64_t silence = takeNumber(file, offset);
    return {.leading = silence + decoderDelay, .stated = std::max<std::int64_t>(0, frames - silence)};
}

// A frame of one-bit audio is what FFmpeg makes of eight samples.
constexpr int dsdSamples = 8;

CodecPadding ofDsf(FileHead &file)
{
    constexpr std::int64_t sampleCount = 64;
    return {.stated = static_cast<std::int64_t>(file.littleEndian(sampleCount, 8) / dsdSamples)};
}

/// Where the chunk of that name begins, among those from `offset` on; beyond the end without one.
std::int64_t dffChunk(FileHead &file, std::int64_t offset, std::string_view name)
{
    constexpr int mostChunks = 1000;
    for (int i = 0; i < mostChunks && offset < file.size(); ++i) {
        if (file.has(offset, name)) {
            return offset;
        }
        const auto size = static_cast<std::int64_t>(file.bigEndian(offset + 4, 8));
        if (size < 0 || size > file.size()) {
            break;
        }
        offset += 12 + size + size % 2;
    }
    return file.size();
}

CodecPadding ofDff(FileHead &file)
{
    constexpr std::int64_t firstChunk = 16;
    const std::int64_t properties = dffChunk(file, firstChunk, "PROP");
    const std::uint64_t channels = file.bigEndian(dffChunk(file, properties + 16, "CHNL") + 12, 2);
    const std::uint64_t bytes = file.bigEndian(dffChunk(file, firstChunk, "DSD ") + 4, 8);
    return {.stated = channels == 0 ? 0 : static_cast<std::int64_t>(bytes / channels)};
}

} // namespace

CodecPadding CodecPadding::of(const QString &path, const AudioContent &content)
{
    FileHead file(FileDescriptor::openForReading(path));
    switch (content.container) {
    case Container::MpegAudio:
        return ofMp3(file, content.start);
    case Container::MusepackSv8:
        return ofMusepack(file, content.start);
    case Container::Dsf:
        return ofDsf(file);
    case Container::Dff:
        return ofDff(file);
    default:
        return {};
    }
}

} // namespace kruv
