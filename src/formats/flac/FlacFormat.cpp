// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ToolWords.h"
#include "formats/flac/DecodeFlacTask.h"
#include "formats/flac/EncodeFlacTask.h"
#include "formats/flac/FlacOptions.h"
#include "formats/flac/FlacTool.h"
#include "formats/flac/VerifyFlacTask.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"FLAC"};
constexpr const char *mediaTypes[] = {"audio/flac", "audio/x-flac"};
constexpr int bits[] = {8, 16, 24};
constexpr AudioLimits limits{bits, 8, 1, 655'350};
constexpr const FormatOption *options[] = {&FlacOptions::level, &FlacOptions::verify, &FlacOptions::lax,
                                           &FlacOptions::keepForeignMetadata, &FlacOptions::fingerprints};

const SourceRule rules[] = {
    {&appleLosslessFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding Apple Lossless to Flac"),
     nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Writing Flac Tags")},
    {&wavpackFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding Wavpack to FLAC"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Writing FLAC Tags")},
    {&monkeysAudioFormat, nullptr, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Writing Flac Tags")},
    {&aiffFormat, nullptr, nullptr, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Writing Flac Tags")},
};
const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Flac"),
                             .encoder = FlacTool::encode,
                             .rules = rules};

constexpr FailureHint hints[] = {
    {u"already exists, use -f",
     QT_TRANSLATE_NOOP("FailureAdvice",
                       "Move the existing file away, choose another output folder, or allow overwriting.")},
    {u"decoded number of samples",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source ends too early: it is damaged or was not copied whole.")},
    {u"unexpected EOF",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source ends too early: it is damaged or was not copied whole.")},
    {u"END_OF_STREAM events",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source ends too early: it is damaged or was not copied whole.")},
    {u"MD5 signature mismatch",
     QT_TRANSLATE_NOOP("FailureAdvice", "The audio is not what was encoded: the file is damaged.")},
    {u"FLAC__STREAM_DECODER_ERROR",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source is damaged or is not a FLAC file.")},
    {u"FLAC__STREAM_DECODER_ABORTED",
     QT_TRANSLATE_NOOP("FailureAdvice", "Check that the output folder's disk has space left.")},
    {u"FLAC__STREAM_DECODER",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source is damaged or is not a FLAC file.")},
    {u"not a WAVE file",
     QT_TRANSLATE_NOOP("FailureAdvice", "The file is not the kind of audio that its name says.")},
    {u"unsupported number of channels",
     QT_TRANSLATE_NOOP("FailureAdvice", "flac can't take this number of channels from this kind of file.")},
    {u"'data' chunk has size of 0", QT_TRANSLATE_NOOP("FailureAdvice", "The source holds no audio.")},
    {u"'SSND' chunk has size <= 8", QT_TRANSLATE_NOOP("FailureAdvice", "The source holds no audio.")},
    {u"unsupported format type",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source holds a kind of audio that this format can't take.")},
    {u"partial sample",
     QT_TRANSLATE_NOOP("FailureAdvice", "The source ends too early: it is damaged or was not copied whole.")},
};
constexpr QStringView chatter[] = {
    u"flac \\d\\S*\\s*Copyright[\\s\\S]*?Type `flac' for details\\.",
    u"(testing, )?\\d+(\\.\\d+)?% complete(, ratio=\\d+\\.\\d{3})?",
    u"wrote \\d+ (bytes|samples)(, ratio=[\\d.]+)?",
    u"(init_status|init status|state) = FLAC__[A-Z_]*[A-Z](?![a-z])",
    u"[^\\n]*WARNING: skipping unknown chunk[^)]*\\)",
};
constexpr ToolWords words{hints, chatter};

} // namespace

/// FLAC, by flac.
const Format flacFormat{
    .id = "flac",
    .label = u"FLAC",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true,
                .encode = true,
                .checksum = true,
                .shntool = true,
                .fix = true,
                .lossy = true,
                .tags = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("fLaC"); },
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeFlacTask>,
    .decode = makeConversionTask<DecodeFlacTask>,
    .encoderTool = "flac",
    .recipe = &recipe,
    .toWav = &FlacTool::toWav,
    .test =
        [](TaskCompletionSink *queue, const QString &file, std::shared_ptr<KruvTaskResults> results) {
            auto job = makeTestTask<VerifyFlacTask>("flac", "-t", queue, file, std::move(results));
            job->setTitle(VerifyFlacTask::tr("Verify FLAC"));
            return job;
        },
    .chunksOption = &FlacOptions::keepForeignMetadata,
    .tags = &TagAccesses::flac,
    .words = &words,
};

} // namespace kruv
