// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/Mp4Codec.h"

#include "audio/FileHead.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <string_view>

namespace kruv::Mp4Codec {

namespace {

using Codec = AudioContent::Codec;

constexpr int mostBoxes = 10'000; // beside each other; more is damage

/// The inside of a box.
struct Range
{
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

/// Goes through the boxes of a range until `take` has enough. Lengths that lead nowhere end it.
void eachBox(FileHead &file, Range range, std::string_view name, const std::function<bool(Range)> &take)
{
    for (int i = 0; i < mostBoxes && range.begin + 8 <= range.end; ++i) {
        auto size = static_cast<std::int64_t>(file.bigEndian(range.begin, 4));
        std::int64_t head = 8;
        if (size == 1) {
            size = static_cast<std::int64_t>(file.bigEndian(range.begin + 8, 8));
            head = 16;
        } else if (size == 0) {
            size = range.end - range.begin;
        }
        if (size < head || size > range.end - range.begin) {
            return;
        }
        if (file.has(range.begin + 4, name) && take({range.begin + head, range.begin + size})) {
            return;
        }
        range.begin += size;
    }
}

std::optional<Range> firstBox(FileHead &file, Range range, std::initializer_list<std::string_view> path)
{
    for (const std::string_view name : path) {
        std::optional<Range> inside;
        eachBox(file, range, name, [&](Range box) {
            inside = box;
            return true;
        });
        if (!inside) {
            return {};
        }
        range = *inside;
    }
    return range;
}

/// Reads the descriptors of an elementary stream.
class Descriptors
{
public:
    explicit Descriptors(std::span<const std::uint8_t> bytes)
        : m_bytes(bytes)
    {
    }

    bool enter(std::uint8_t tag)
    {
        if (byte() != tag) {
            return false;
        }
        while ((byte() & 0x80) != 0) { // the length, which does not matter
        }
        return true;
    }
    void skip(std::size_t count) { m_at = std::min(m_bytes.size(), m_at + count); }
    std::uint8_t byte() { return m_at < m_bytes.size() ? m_bytes[m_at++] : 0; }

private:
    std::span<const std::uint8_t> m_bytes;
    std::size_t m_at = 0;
};

/// Of the content of an "esds" box.
Codec ofElementaryStream(std::span<const std::uint8_t> box)
{
    constexpr std::uint8_t streamTag = 3;
    constexpr std::uint8_t configurationTag = 4;
    constexpr std::uint8_t specificTag = 5;
    constexpr unsigned mpeg4Audio = 0x40;
    constexpr unsigned lossless = 36;
    Descriptors descriptors(box);
    descriptors.skip(4);
    if (!descriptors.enter(streamTag)) {
        return Codec::Other;
    }
    descriptors.skip(3);
    if (!descriptors.enter(configurationTag)) {
        return Codec::Other;
    }
    const unsigned type = descriptors.byte();
    if (type == 0x69 || type == 0x6B) {
        return Codec::Mp3;
    }
    if (type != mpeg4Audio) {
        return type == 0x66 || type == 0x67 || type == 0x68 ? Codec::Aac : Codec::Other;
    }
    descriptors.skip(12);
    if (!descriptors.enter(specificTag)) {
        return Codec::Aac;
    }
    const unsigned first = descriptors.byte();
    const unsigned object = first >> 3 == 31 ? 32 + ((first & 7) << 3 | descriptors.byte() >> 5) : first >> 3;
    return object == lossless ? Codec::Mpeg4Als : Codec::Aac;
}

/// Of the first entry of a sample description.
Codec ofEntry(FileHead &file, Range entry)
{
    struct Row
    {
        std::string_view type;
        Codec codec;
    };
    static constexpr std::array rows{
        Row{"alac", Codec::AppleLossless}, Row{"fLaC", Codec::Flac},     Row{"Opus", Codec::Opus},
        Row{"mlpa", Codec::TrueHd},        Row{".mp3", Codec::Mp3},      Row{"sowt", Codec::Pcm},
        Row{"twos", Codec::Pcm},           Row{"in24", Codec::Pcm},      Row{"in32", Codec::Pcm},
        Row{"ipcm", Codec::Pcm},           Row{"fl32", Codec::FloatPcm}, Row{"fl64", Codec::FloatPcm},
        Row{"fpcm", Codec::FloatPcm},
    };
    const auto row =
        std::ranges::find_if(rows, [&](const Row &each) { return file.has(entry.begin + 4, each.type); });
    if (row != rows.end()) {
        return row->codec;
    }
    if (file.has(entry.begin + 4, "mp4a")) {
        // QuickTime hides it in further boxes; looking for the name finds it in all of them.
        constexpr std::int64_t longest = 4096;
        const auto bytes =
            file.bytes(entry.begin, static_cast<std::size_t>(std::min(entry.end - entry.begin, longest)));
        constexpr std::string_view name = "esds";
        const auto at =
            std::search(bytes.begin(), bytes.end(), name.begin(), name.end(),
                        [](std::uint8_t byte, char c) { return byte == static_cast<std::uint8_t>(c); });
        return at == bytes.end()
                   ? Codec::Other
                   : ofElementaryStream({at + static_cast<std::ptrdiff_t>(name.size()), bytes.end()});
    }
    return Codec::Other;
}

} // namespace

Codec in(FileHead &file)
{
    const auto movie = firstBox(file, {0, file.size()}, {"moov"});
    Codec codec = Codec::Unknown;
    eachBox(file, movie.value_or(Range()), "trak", [&](Range track) {
        const auto handler = firstBox(file, track, {"mdia", "hdlr"});
        const auto samples = firstBox(file, track, {"mdia", "minf", "stbl", "stsd"});
        if (handler && samples && file.has(handler->begin + 8, "soun") &&
            file.bigEndian(samples->begin + 4, 4) > 0) {
            codec = ofEntry(file, {samples->begin + 8, samples->end});
        }
        return codec != Codec::Unknown;
    });
    return codec;
}

} // namespace kruv::Mp4Codec
