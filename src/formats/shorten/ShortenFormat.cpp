// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/FileStart.h"
#include "formats/JobMakers.h"
#include "formats/Records.h"
#include "formats/ShntoolConversion.h"
#include "formats/shorten/DecodeSHNTask.h"
#include "formats/shorten/EncodeSHNTask.h"
#include "formats/shorten/ShortenOptions.h"

#include <QtGlobal>

namespace kruv {

namespace {

constexpr QStringView types[] = {u"SHN"};
constexpr const char *mediaTypes[] = {"application/x-shorten", "audio/x-shorten"};
constexpr int bits[] = {8, 16};
constexpr AudioLimits limits{bits, 8, 1, 999'999};

constexpr const FormatOption *options[] = {&ShortenOptions::md5};

// What shntool reads by itself.
constexpr const Format *readsItself[] = {&flacFormat,         &wavpackFormat, &ttaFormat,
                                         &monkeysAudioFormat, &aiffFormat,    &shortenFormat};
const TranscodeRecipe recipe{.firstStatus = QT_TRANSLATE_NOOP("kruv::ConversionTask", "Encoding to SHN"),
                             .readsItself = readsItself};

} // namespace

const FormatOption ShortenOptions::md5{
    .id = "md5",
    .kind = FormatOption::Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "&MD5 file"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Write an MD5 list of the Shorten files afterwards"),
    .controlName = "generateMD5Button"};

/// Shorten, by shntool over our own shorten.
const Format shortenFormat{
    .id = "shn",
    .label = u"SHN",
    .types = types,
    .mediaTypes = mediaTypes,
    .takenBy =
        {.decode = true, .encode = true, .checksum = true, .shntool = true, .fix = true, .lossy = true},
    .isContent = [](const FileStart &start) { return start.bytes().startsWith("ajkg"); },
    .limits = &limits,
    .options = options,
    .encode = makeConversionTask<EncodeSHNTask>,
    .decode = makeConversionTask<DecodeSHNTask>,
    .encoderTool = "shorten",
    .recipe = &recipe,
    .toWav = &ShntoolConversion::toWav,
    .keepsWavChunks = true,
};

} // namespace kruv
