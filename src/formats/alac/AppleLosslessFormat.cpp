// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "audio/CoreAudioHelper.h"
#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ShntoolConversion.h"
#include "formats/alac/DecodeALACTask.h"
#include "formats/alac/EncodeALACTask.h"
#include "formats/monkeysaudio/MacTool.h"
#include "formats/wavpack/WavpackTool.h"
#include "tags/TagAccess.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"M4A"};
constexpr const char *mediaTypes[] = {"audio/mp4", "audio/x-m4a"};
constexpr int bits[] = {16, 24};
constexpr AudioLimits limits{bits, 8, 1, 384'000};

// The decoders as this encoder uses them: it spells WAV in capitals.
const ToolStep shntoolToWav{"shntool", ShntoolConversion::decode, ShntoolConversion::read,
                            QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%")};
const ToolStep wvunpackToWav{"wvunpack", WavpackTool::decodeToTemporary, WavpackTool::read,
                             QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%")};
const SourceRule rules[] = {
    {&shortenFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding SHN to Wav"), &shntoolToWav},
    {&flacFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding FLAC to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying FLAC Tags"),
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding to WAV: %1%")},
    {&monkeysAudioFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding APE to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying APE Tags")},
    {&wavpackFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding Wavepack to Wav"), &wvunpackToWav,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying Wavpack Tags")},
    {&ttaFormat, QT_TRANSLATE_NOOP("kruv::ConversionTask", "Decoding TTA to Wav"), nullptr,
     QT_TRANSLATE_NOOP("kruv::ConversionTask", "Copying TTA Tags")},
};
const TranscodeRecipe recipe{.firstStatus =
                                 QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to Apple Lossless"),
                             .rules = rules,
                             .readsAnything = true};

bool isAppleLossless(const FileStart &start)
{
    return start.bytes().mid(4, 4) == "ftyp" && holdsCodec<AudioContent::Codec::AppleLossless>(start) &&
           CoreAudioHelper::isAppleLossless(start.path());
}

} // namespace

/// Apple Lossless in MPEG-4 files, in this process.
const Format appleLosslessFormat{
    .id = "m4a",
    .label = u"M4A",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy = {.decode = true, .tags = true},
    .isContent = isAppleLossless,
    .limits = &limits,
    .encode = makeConversionTask<EncodeALACTask>,
    .decode = makeConversionTask<DecodeALACTask>,
    .recipe = &recipe,
    .tags = &TagAccesses::mp4,
};

} // namespace kruv
