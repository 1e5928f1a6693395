// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/ContentProbe.h"

#include "audio/AudioError.h"
#include "audio/ContainedCodec.h"
#include "audio/FileHead.h"
#include "audio/LeadingTags.h"
#include "audio/MpegFrames.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace kruv {

namespace {

using Container = AudioContent::Container;
using Codec = AudioContent::Codec;
using Kind = AudioContent::Kind;

/// What the first bytes decide; those that hold one codec only name it.
struct Magic
{
    std::int64_t offset;
    std::string_view text;
    Container container;
    Codec codec;
};

constexpr std::array magics{
    Magic{0, "fLaC", Container::Flac, Codec::Flac},
    Magic{0, "wvpk", Container::WavPack, Codec::WavPack},
    Magic{0, "ajkg", Container::Shorten, Codec::Shorten},
    Magic{0, "TTA1", Container::Tta, Codec::Tta},
    Magic{0, "MAC ", Container::MonkeysAudio, Codec::MonkeysAudio},
    Magic{0, "tBaK", Container::Tak, Codec::Tak},
    Magic{0, "MPCK", Container::MusepackSv8, Codec::Musepack},
    Magic{0, "MP+\x07", Container::MusepackSv7, Codec::Musepack},
    Magic{0, "MP+\x17", Container::MusepackSv7, Codec::Musepack},
    Magic{4, "\xF8\x72\x6F\xBA", Container::Mlp, Codec::TrueHd},
    Magic{4, "\xF8\x72\x6F\xBB", Container::Mlp, Codec::Mlp},
};

/// Files of these bring their own place for tags, and nothing stands around them.
constexpr std::array wrapped{
    Magic{8, "WAVE", Container::Wav, Codec::Unknown},
    Magic{0, "riff\x2E\x91\xCF\x11", Container::Wave64, Codec::Unknown},
    Magic{8, "AIFF", Container::Aiff, Codec::Pcm},
    Magic{8, "AIFC", Container::Aifc, Codec::Unknown},
    Magic{0, "caff", Container::Caf, Codec::Unknown},
    Magic{0, "DSD ", Container::Dsf, Codec::Dsd},
    Magic{12, "DSD ", Container::Dff, Codec::Dsd},
    Magic{0, "\x30\x26\xB2\x75\x8E\x66\xCF\x11", Container::Asf, Codec::Unknown},
    Magic{4, "ftyp", Container::Mp4, Codec::Unknown},
    Magic{4, "moov", Container::Mp4, Codec::Unknown},
    Magic{4, "mdat", Container::Mp4, Codec::Unknown},
    Magic{4, "free", Container::Mp4, Codec::Unknown},
    Magic{4, "skip", Container::Mp4, Codec::Unknown},
    Magic{4, "wide", Container::Mp4, Codec::Unknown},
};

/// What a file of this container begins with besides.
bool hasFirstWord(FileHead &file, Container &container)
{
    switch (container) {
    case Container::Wav:
        container = file.has(0, "RF64")   ? Container::Rf64
                    : file.has(0, "BW64") ? Container::Bw64
                                          : Container::Wav;
        return container != Container::Wav || file.has(0, "RIFF") || file.has(0, "RIFX");
    case Container::Aiff:
    case Container::Aifc:
        return file.has(0, "FORM");
    case Container::Dff:
        return file.has(0, "FRM8");
    default:
        return true;
    }
}

/// Bytes of the Lyrics3 tag that ends at `end`; 0 without one.
std::int64_t lyricsBefore(FileHead &file, std::int64_t end)
{
    constexpr std::int64_t ending = 15; // six digits and the mark
    if (!file.has(end - 9, "LYRICS200")) {
        return 0;
    }
    std::int64_t size = ending;
    std::int64_t place = 100'000;
    for (const std::uint8_t digit : file.bytes(end - ending, 6)) {
        size += (digit - '0') * place;
        place /= 10;
    }
    return size > ending && size < end ? size : 0;
}

/// Bytes of the APEv2 tag that ends at `end`; 0 without one.
std::int64_t apeTagBefore(FileHead &file, std::int64_t end)
{
    constexpr std::int64_t footer = 32;
    constexpr std::uint64_t hasHeader = 0x80000000;
    if (!file.has(end - footer, "APETAGEX")) {
        return 0;
    }
    const bool header = (file.littleEndian(end - 12, 4) & hasHeader) != 0;
    const std::int64_t size =
        static_cast<std::int64_t>(file.littleEndian(end - 20, 4)) + (header ? footer : 0);
    return size < end ? size : 0;
}

/// Before the tags that end a file.
std::int64_t beforeTags(FileHead &file, std::int64_t start)
{
    constexpr std::int64_t id3v1 = 128;
    std::int64_t end = file.size();
    for (;;) {
        std::int64_t tag = end - start >= id3v1 && file.has(end - id3v1, "TAG") ? id3v1 : 0;
        tag = tag == 0 ? apeTagBefore(file, end) : tag;
        tag = tag == 0 ? lyricsBefore(file, end) : tag;
        if (tag == 0 || end - tag <= start) {
            return end;
        }
        end -= tag;
    }
}

Kind wavPackKind(FileHead &file, std::int64_t start)
{
    constexpr std::uint64_t hybrid = 0x8;
    constexpr std::uint64_t dsd = 0x80000000;
    const std::uint64_t flags = file.littleEndian(start + 24, 4);
    return (flags & dsd) != 0 ? Kind::Dsd : (flags & hybrid) != 0 ? Kind::Hybrid : Kind::Lossless;
}

AudioContent found(FileHead &file)
{
    for (const Magic &magic : wrapped) {
        Container container = magic.container;
        if (file.has(magic.offset, magic.text) && hasFirstWord(file, container)) {
            const Codec codec =
                magic.codec == Codec::Unknown ? ContainedCodec::in(file, container) : magic.codec;
            return {container, codec, AudioContent::kindOf(codec), 0, file.size()};
        }
    }
    const std::int64_t start = LeadingTags::end(file);
    if (file.has(start, "OggS")) {
        const Codec codec = ContainedCodec::inOgg(file, start);
        return {Container::Ogg, codec, AudioContent::kindOf(codec), start, file.size()};
    }
    for (const Magic &magic : magics) {
        if (file.has(start + magic.offset, magic.text)) {
            const Kind kind =
                magic.codec == Codec::WavPack ? wavPackKind(file, start) : AudioContent::kindOf(magic.codec);
            return {magic.container, magic.codec, kind, start, beforeTags(file, start)};
        }
    }
    const std::int64_t end = beforeTags(file, start);
    const MpegFrames::Found frames = MpegFrames::find(file, start, end);
    switch (frames.kind) {
    case MpegFrames::Kind::Layers:
        return {Container::MpegAudio, Codec::Mp3, Kind::Lossy, frames.start, end};
    case MpegFrames::Kind::Adts:
        return {Container::Adts, Codec::Aac, Kind::Lossy, frames.start, end};
    default:
        return {};
    }
}

} // namespace

AudioContent ContentProbe::of(const QString &path)
{
    try {
        FileHead file(FileDescriptor::openForReading(path));
        const AudioContent content = found(file);
        // A container of something that is no audio, or of nothing.
        return content.codec == Codec::Unknown ? AudioContent() : content;
    } catch (const AudioError &) {
        return {};
    }
}

} // namespace kruv
