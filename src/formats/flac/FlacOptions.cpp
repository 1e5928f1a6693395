// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/flac/FlacOptions.h"

#include <QtGlobal>

namespace kruv::FlacOptions {

using Kind = FormatOption::Kind;

const FormatOption level{.id = "level",
                         .kind = Kind::Number,
                         .label = QT_TRANSLATE_NOOP("FormatOption", "&Level"),
                         .help = QT_TRANSLATE_NOOP("FormatOption", "0 (fast) to 8 (small), 5 when not given"),
                         .standard = 5,
                         .maximum = 8,
                         .preferenceKey = "encodeFlacLevel",
                         .controlName = "flacSlider"};
const FormatOption verify{
    .id = "verify",
    .kind = Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Verif&y"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Decode the FLAC that was encoded and compare it on the way"),
    .preferenceKey = "flacVerifyButton",
    .controlName = "flacVerifyButton"};
const FormatOption lax{
    .id = "lax",
    .kind = Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "La&x"),
    .help = QT_TRANSLATE_NOOP("FormatOption",
                              "FLAC outside the streamable subset; the level is then the tool's own"),
    .controlName = "flacLaxButton"};
const FormatOption keepForeignMetadata{
    .id = "keep-foreign-metadata",
    .kind = Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "&Keep foreign metadata"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Keep the chunks of WAV and AIFF that are not audio in FLAC"),
    .preferenceKey = "flacKeepForeignMetadataButton",
    .controlName = "flacKeepForeignMetadataButton"};
const FormatOption fingerprints{
    .id = "fingerprints",
    .kind = Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Fingerprint f&ile"),
    .help =
        QT_TRANSLATE_NOOP("FormatOption", "Write a list of FLAC fingerprints beside the outputs afterwards"),
    .preferenceKey = "flacGenerateFFPButton",
    .controlName = "generateFFPButton"};
const FormatOption throughErrors{
    .id = "through-errors",
    .kind = Kind::Toggle,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Decode through e&rrors"),
    .help =
        QT_TRANSLATE_NOOP("FormatOption", "Go on where a FLAC file is damaged; its original is then kept"),
    .controlName = "decodeFlacThroughErrors"};

} // namespace kruv::FlacOptions
