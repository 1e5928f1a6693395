// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/LossySources.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/opus/DecodeOpusTask.h"
#include "formats/opus/EncodeOpusTask.h"
#include "formats/opus/OpusTool.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"OPUS"};
constexpr const char *mediaTypes[] = {"audio/ogg", "audio/x-opus+ogg"};
constexpr AudioLimits limits{{}, 8, 1, 999'999};
constexpr const FormatOption *options[] = {&OpusTool::mode, &OpusTool::bitRate, &OpusTool::frameSize};
const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Opus"),
                             .rules = LossySources::opus};

constexpr QStringView chatter[] = {
    u"opusenc\\n--[\\s\\S]*?Preskip: \\d+",
    u"opusenc\\n--[\\s\\S]*?/\\.kruv-[a-z]{8}/[^\\n]*\\.opus\\n", // where it failed before it encoded
    u"Decoding to \\d+ Hz[^\\n]*(\\n[^\\n]*=[^\\n]*|\\nEncoded with[^\\n]*)*",
    u"\\r *\\[[-\\\\|/]\\] [^\\r\\n]*",
    u"\\rDecoding complete\\. *",
};
constexpr ToolWords words{{}, chatter};

} // namespace

/// Opus in Ogg, by opusenc and opusdec.
const Format opusFormat{
    .id = "opus",
    .label = u"Opus",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true, .tags = true},
    .isContent =
        [](const FileStart &start) {
            return start.bytes().startsWith("OggS") && start.bytes().contains("OpusHead");
        },
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeOpusTask>,
    .decode = makeConversionTask<DecodeOpusTask>,
    .encoderTool = "opusenc",
    .recipe = &recipe,
    .tags = &TagAccesses::opus,
    .words = &words,
};

} // namespace kruv
