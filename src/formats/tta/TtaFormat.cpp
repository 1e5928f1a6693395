// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/UsualSources.h"
#include "formats/tta/TtaTool.h"
#include "formats/tta/VerifyTTATask.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"TTA"};
constexpr const char *mediaTypes[] = {"audio/x-tta"};
constexpr int bits[] = {8, 16, 24};
constexpr AudioLimits limits{bits, 8, 1, 999'999};

const TranscodeRecipe recipe{
    .firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to TTA"),
    .encoder = {"ttaenc", TtaTool::convert, TtaTool::read,
                QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to TTA: %1%")},
    .rules = usualSources,
};
const ToolStep toWav{"ttaenc", TtaTool::convert, TtaTool::read,
                     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to Wav: %1%")};
const DecodeRecipe decoding{
    QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding from TTA"),
    {"ttaenc", TtaTool::convert, TtaTool::read,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding From TTA: %1%")},
    TtaTool::convert,
};

constexpr QStringView chatter[] = {
    u"Percent Progress: \\d+",
    u"(Compressing \\([a-z ]+\\)|Decompressing)\\.\\.\\.",
};
constexpr ToolWords words{{}, chatter};

} // namespace

/// TTA, by our own ttaenc.
const Format ttaFormat{
    .id = "tta",
    .label = u"TTA",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true,
                .encode = true,
                .checksum = true,
                .shntool = true,
                .fix = true,
                .lossy = true,
                .tags = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("TTA1"); },
    .limits = &limits,
    .encode = makeTranscodeTask<&ttaFormat>,
    .decode = makeDecodeTask<&decoding>,
    .encoderTool = "ttaenc",
    .recipe = &recipe,
    .toWav = &toWav,
    .test =
        [](TaskCompletionSink *queue, const QString &file, std::shared_ptr<KruvTaskResults> results) {
            return makeTestTask<VerifyTTATask>("ttaenc", "-t", queue, file, std::move(results));
        },
    .tags = &TagAccesses::tta,
    .words = &words,
};

} // namespace kruv
