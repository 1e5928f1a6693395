// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <cstdint>

namespace kruv {

/// What an audio file is by its content; its name plays no part. See ContentProbe.
struct AudioContent
{
    enum class Container {
        Unknown,
        Wav, ///< RIFF, and RIFX with its high bytes first
        Rf64,
        Bw64,
        Wave64,
        Caf,
        Aiff,
        Aifc,
        Flac,
        Shorten,
        WavPack,
        Tta,
        MonkeysAudio,
        Tak,
        Mlp, ///< a bare stream of MLP or TrueHD
        Mp4,
        Asf,
        Dsf,
        Dff,
        MusepackSv7,
        MusepackSv8,
        MpegAudio, ///< a bare stream of MPEG layers 1 to 3
        Adts,      ///< a bare stream of AAC
        Ogg,
    };
    enum class Codec {
        Unknown,
        Pcm, ///< integers of either byte order
        FloatPcm,
        Flac,
        Shorten,
        WavPack,
        Tta,
        MonkeysAudio,
        AppleLossless,
        Tak,
        Mpeg4Als,
        Mlp,
        TrueHd,
        WmaLossless,
        Dsd,
        Musepack,
        Mp3, ///< and the other layers
        Aac,
        Vorbis,
        Opus,
        Other, ///< in a container of those above; may be readable, is taken for lossy
    };
    enum class Kind {
        Unknown,
        Lossless,
        /// WavPack in its hybrid mode: lossless only together with the correction file, which is not read
        /// here.
        Hybrid,
        Lossy,
        Dsd, ///< becomes PCM, which is another signal
    };

    /// Without a look into the file, which tells hybrid and DSD files of WavPack.
    static Kind kindOf(Codec codec);

    bool isKnown() const { return container != Container::Unknown; }
    /// Plain integer PCM in a file that our own reader knows.
    bool isPlainPcm() const;

    Container container = Container::Unknown;
    Codec codec = Codec::Unknown;
    Kind kind = Kind::Unknown;
    /// Where the audio lies between the ID3v2, APEv2, ID3v1 and Lyrics3 tags around it, in bytes of the file.
    std::int64_t start = 0;
    std::int64_t end = 0;
};

} // namespace kruv
