// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/UsualSources.h"
#include "formats/monkeysaudio/MacTool.h"
#include "formats/monkeysaudio/VerifyApeTask.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"APE"};
constexpr const char *mediaTypes[] = {"audio/x-ape"};
constexpr int bits[] = {8, 16, 24};
constexpr AudioLimits limits{bits, 2, 1, 999'999};
constexpr const FormatOption *options[] = {&MacTool::level};

const TranscodeRecipe recipe{
    .firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Monkey's Audio"),
    .encoder = {"mac", MacTool::compress, MacTool::read,
                QT_TRANSLATE_NOOP("kruv::ConversionTask",
                                  "Encoding to Monkey's Audio: %1%   %2 seconds remaining")},
    .rules = usualSources,
};
const ToolStep toWav{
    "mac", MacTool::extract, MacTool::read,
    QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%   %2 seconds remaining")};
const DecodeRecipe decoding{
    QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding From Monkey's Audio"),
    {"mac", MacTool::extract, MacTool::read,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding from Monkey's Audio: %1%   %2 seconds remaining")},
    MacTool::extract,
};

constexpr QStringView chatter[] = {
    u"(Compressing \\([a-z ]+\\)|Decompressing)\\.\\.\\.",
    u"Success\\.\\.\\.",
    u"Progress: [\\d.]+% \\([^)]*\\)",
};
constexpr ToolWords words{{}, chatter};

} // namespace

/// Monkey's Audio, by our own mac.
const Format monkeysAudioFormat{
    .id = "ape",
    .label = u"APE",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy =
        {.decode = true, .encode = true, .checksum = true, .shntool = true, .lossy = true, .tags = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("MAC "); },
    .limits = &limits,
    .options = options,
    .encode = makeTranscodeTask<&monkeysAudioFormat>,
    .decode = makeDecodeTask<&decoding>,
    .encoderTool = "mac",
    .recipe = &recipe,
    .toWav = &toWav,
    .test =
        [](TaskCompletionSink *queue, const QString &file, std::shared_ptr<KruvTaskResults> results) {
            return makeTestTask<VerifyApeTask>("mac", "-v", queue, file, std::move(results));
        },
    .keepsWavChunks = true,
    .tags = &TagAccesses::monkeysAudio,
    .words = &words,
};

} // namespace kruv
