// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/LossySources.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/heaac/EncodeHEAACTask.h"
#include "formats/heaac/HeAacTool.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"M4A"};
constexpr const char *mediaTypes[] = {"audio/mp4"};
constexpr AudioLimits limits{{}, 2, 1, 999'999};
constexpr const FormatOption *options[] = {&HeAacTool::bitRate};
constexpr const Format *readsItself[] = {&aiffFormat};
const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to HE-AAC"),
                             .rules = LossySources::aac,
                             .readsItself = readsItself};

constexpr FailureHint hints[] = {
    {u"there is no HE-AAC of",
     QT_TRANSLATE_NOOP("FailureAdvice", "Choose a bit rate that suits this source.")},
};
constexpr ToolWords words{hints, {}};

} // namespace

/// HE-AAC, by our own aacplusenc.
const Format heAacFormat{
    .id = "he-aac",
    .label = u"HE-AAC",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::Lossy,
    .isContent = [](const FileStart &) { return false; }, // its files are known as AAC
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeHEAACTask>,
    .encoderTool = "aacplusenc",
    .recipe = &recipe,
    .words = &words,
};

} // namespace kruv
