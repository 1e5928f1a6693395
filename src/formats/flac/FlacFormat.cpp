// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/flac/DecodeFlacTask.h"
#include "formats/flac/EncodeFlacTask.h"
#include "formats/flac/FlacOptions.h"
#include "formats/flac/FlacTool.h"
#include "formats/flac/VerifyFlacTask.h"
#include "tags/TagAccess.h"

namespace kruv {

namespace {

constexpr QStringView types[] = {u"FLAC"};
constexpr const char *mediaTypes[] = {"audio/flac", "audio/x-flac"};
constexpr int bits[] = {8, 16, 24};
constexpr AudioLimits limits{bits, 8, 1, 655'350};
constexpr const FormatOption *options[] = {&FlacOptions::level, &FlacOptions::verify, &FlacOptions::lax,
                                           &FlacOptions::keepForeignMetadata, &FlacOptions::fingerprints};

const SourceRule rules[] = {
    {&appleLosslessFormat, "Encoding Apple Lossless to Flac", nullptr, "Writing Flac Tags"},
    {&wavpackFormat, "Encoding Wavpack to FLAC", nullptr, "Writing FLAC Tags"},
    {&monkeysAudioFormat, nullptr, nullptr, "Writing Flac Tags"},
    {&aiffFormat, nullptr, nullptr, "Writing Flac Tags"},
};
const TranscodeRecipe recipe{.firstStatus = "Encoding to Flac", .encoder = FlacTool::encode, .rules = rules};

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
    .isContent = [](const FileStart &start) { return start.bytes.startsWith("fLaC"); },
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
            job->setTitle(QStringLiteral("Verify FLAC"));
            return job;
        },
    .tags = &TagAccesses::flac,
};

} // namespace kruv
