// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"ALS"};
constexpr const char *mediaTypes[] = {"audio/mp4"};

} // namespace

/// MPEG-4 Audio Lossless Coding in MP4, read in this process.
const Format alsFormat{
    .id = "als",
    .label = u"MPEG-4 ALS",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = holdsCodec<AudioContent::Codec::Mpeg4Als>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
