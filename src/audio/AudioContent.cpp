// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AudioContent.h"

#include <algorithm>
#include <array>

namespace kruv {

AudioContent::Kind AudioContent::kindOf(Codec codec)
{
    switch (codec) {
    case Codec::Unknown:
        return Kind::Unknown;
    case Codec::Dsd:
        return Kind::Dsd;
    case Codec::Musepack:
    case Codec::Mp3:
    case Codec::Aac:
    case Codec::Vorbis:
    case Codec::Opus:
    case Codec::Other:
        return Kind::Lossy;
    default:
        return Kind::Lossless;
    }
}

bool AudioContent::isPlainPcm() const
{
    constexpr std::array own{Container::Wav,    Container::Rf64, Container::Bw64,
                             Container::Wave64, Container::Aiff, Container::Aifc};
    return codec == Codec::Pcm && std::ranges::count(own, container) > 0;
}

} // namespace kruv
