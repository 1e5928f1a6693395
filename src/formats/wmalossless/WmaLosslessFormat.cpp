// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"WMA"};
constexpr const char *mediaTypes[] = {"audio/x-ms-wma"};

} // namespace

/// Windows Media Audio Lossless; the lossy kinds are not of this format. Read in this process.
const Format wmaLosslessFormat{
    .id = "wma-lossless",
    .label = u"WMA Lossless",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .encode = true, .lossy = true},
    .isContent = holdsCodec<AudioContent::Codec::WmaLossless>,
    .decode = makeConversionTask<PcmConversionTask>,
};

} // namespace kruv
