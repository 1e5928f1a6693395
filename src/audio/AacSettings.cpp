// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/AacSettings.h"

#include "audio/AudioError.h"
#include "audio/AvFunctions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace kruv {

namespace {

// How the four modes reach the two encoders that libavcodec may have:
//
//   mode                     libfdk_aac                      aac (libavcodec's own)
//   0 constant               b = bit rate                    b = bit rate
//   1 average                b = bit rate                    b = bit rate
//   2 constrained variable   b = bit rate                    b = bit rate
//   3 variable, 0 to 127     vbr = 1 to 5                    global_quality on its own scale
//
// Neither has a mode of its own for 1 and 2. Both spend the bits of their rate unevenly over the frames, out
// of a reservoir, and hold the rate on average: that is what 1 asks for, it is within what 2 allows, and the
// stream format knows nothing stricter for 0. What a person chooses in all three is a rate, and a rate is
// what they get. In mode 3 the quality is what stays the same and the rate follows the music.

struct QualityPoint
{
    double quality; // 0 to 127
    double scale;   // the encoder's own
};

// The encoder's scale where it gives the rates that people know 0 to 127 by, measured on plucked strings, on
// pink noise and on both together, in stereo at 44.1 kHz: about 40, 90, 125, 190, 255 and 320 kbit/s. Between
// two points the scale is read off the line.
constexpr std::array<QualityPoint, 6> nativeScale{
    {{0, 0.25}, {45, 0.7}, {64, 1.0}, {91, 1.3}, {109, 1.7}, {127, 2.1}}};

double scaleOf(double quality)
{
    const auto *above =
        std::find_if(nativeScale.begin() + 1, nativeScale.end() - 1,
                     [quality](const QualityPoint &point) { return quality <= point.quality; });
    const auto *below = above - 1;
    const double share = (quality - below->quality) / (above->quality - below->quality);
    return below->scale + share * (above->scale - below->scale);
}

} // namespace

void AacSettings::applyTo(AVCodecContext &encoder) const
{
    constexpr std::uint32_t variable = 3;
    if (bitrate != 0) {
        encoder.bit_rate = bitrate;
    }
    if (mode != variable || quality == 0) {
        return;
    }
    const double level = std::min(quality, 127U);
    if (std::string_view(encoder.codec->name) == "libfdk_aac") {
        const auto vbr = 1 + std::lround(level / 127.0 * 4.0);
        if (av_opt_set_int(encoder.priv_data, "vbr", vbr, 0) < 0) {
            throw AudioError(QStringLiteral("AudioConverterSetProperty vbrqfailed"));
        }
    } else {
        encoder.flags |= AV_CODEC_FLAG_QSCALE;
        encoder.global_quality = static_cast<int>(std::lround(FF_QP2LAMBDA * scaleOf(level)));
    }
}

} // namespace kruv
