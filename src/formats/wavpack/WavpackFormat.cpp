// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/FormatOption.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/UsualSources.h"
#include "formats/wavpack/VerifyWavepackTask.h"
#include "formats/wavpack/WavpackTool.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"WV"};
constexpr const char *mediaTypes[] = {"audio/x-wavpack"};
constexpr int bits[] = {8, 16, 24, 32};
constexpr AudioLimits limits{bits, 256, 1, 384'000};
constexpr const FormatOption *options[] = {&WavpackTool::mode};

const TranscodeRecipe recipe{
    .firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding Wavpack"),
    .encoder = {"wavpack", WavpackTool::encode, WavpackTool::read,
                QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Wavpack: %1%")},
    .rules = usualSources,
};
const ToolStep toWav{"wvunpack", WavpackTool::decodeToTemporary, WavpackTool::read,
                     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding From Wavpack %1%")};
const DecodeRecipe decoding{
    QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding From Wavpack"),
    {"wvunpack", WavpackTool::decode, WavpackTool::read,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Deoding From Wavpack: %1%")},
    WavpackTool::decodeForAiff,
};

constexpr QStringView chatter[] = {
    u"W(V|AV)(UN)?PACK [^\\n]*\\s*Copyright[^\\n]*",
    u"(creating|restoring) [^\\n\\r]*?,(?=\\s)",
    u"\\d+% done\\.\\.\\.",
    u"(created|restored) [^\\n\\r]* in [\\d.]+ secs \\([^)]*\\)",
};
constexpr ToolWords words{{}, chatter};

} // namespace

const Format wavpackFormat{
    .id = "wv",
    .label = u"WV",
    .types = types,
    .mediaTypes = mediaTypes,
    .kind = FormatKind::LosslessWithLossyMode,
    .takenBy = {.decode = true,
                .encode = true,
                .checksum = true,
                .shntool = true,
                .fix = true,
                .lossy = true,
                .tags = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("wvpk"); },
    .limits = &limits,
    .options = options,
    .encode = makeTranscodeTask<&wavpackFormat>,
    .decode = makeDecodeTask<&decoding>,
    .encoderTool = "wavpack",
    .recipe = &recipe,
    .toWav = &toWav,
    .test =
        [](TaskCompletionSink *queue, const QString &file, std::shared_ptr<KruvTaskResults> results) {
            return makeTestTask<VerifyWavepackTask>("wvunpack", "-v", queue, file, std::move(results));
        },
    .keepsWavChunks = true,
    .keepsWavFloats = true,
    .tags = &TagAccesses::wavpack,
    .words = &words,
};

} // namespace kruv
