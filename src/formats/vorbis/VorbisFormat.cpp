// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/PcmConversionTask.h"
#include "formats/Records.h"
#include "formats/vorbis/VorbisTool.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"OGG", u"OGA"};
constexpr const char *mediaTypes[] = {"audio/ogg", "audio/x-vorbis+ogg"};
constexpr AudioLimits limits{{}, 8, 1, 192'000};
constexpr const FormatOption *options[] = {&VorbisTool::mode, &VorbisTool::bitRate, &VorbisTool::quality};
const TranscodeRecipe recipe{
    .firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Ogg Vorbis"),
    .encoder = {"oggenc", VorbisTool::encode, VorbisTool::read,
                QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Ogg Vorbis: %1%")},
};

} // namespace

/// Vorbis in Ogg, by oggenc; read in this process.
const Format vorbisFormat{
    .id = "vorbis",
    .label = u"Ogg Vorbis",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .takenBy = {.decode = true, .encode = true, .tags = true},
    .isContent =
        [](const FileStart &start) {
            return start.bytes().startsWith("OggS") && start.bytes().contains("\x01vorbis");
        },
    .limits = &limits,
    .options = options,
    .encode = makeLossyTask<&vorbisFormat>,
    .decode = makeConversionTask<PcmConversionTask>,
    .encoderTool = "oggenc",
    .recipe = &recipe,
    .tags = &TagAccesses::vorbis,
};

} // namespace kruv
