// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/LossySources.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"
#include "formats/aac/AacOptions.h"
#include "formats/aac/EncodeAACTask.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"M4A"};
constexpr const char *mediaTypes[] = {"audio/mp4", "audio/x-m4a"};
constexpr AudioLimits limits{{}, 8, 1, 999'999};
constexpr const FormatOption *options[] = {&AacOptions::mode, &AacOptions::bitRate, &AacOptions::quality};

bool isAac(const FileStart &start)
{
    return start.bytes().mid(4, 4) == "ftyp" && !appleLosslessFormat.isContent(start);
}

const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to AAC"),
                             .rules = LossySources::aac,
                             .readsAnything = true};

} // namespace

/// AAC in MPEG-4 files, in this process.
const Format aacFormat{
    .id = "aac",
    .label = u"AAC",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true},
    .isContent = isAac,
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeAACTask>,
    .decode = makeConversionTask<PcmConversionTask>,
    .recipe = &recipe,
    .tags = &TagAccesses::mp4,
};

} // namespace kruv
