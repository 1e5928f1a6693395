// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "formats/aac/AacOptions.h"

#include "formats/RateOptions.h"

namespace kruv::AacOptions {

namespace {

using Kind = FormatOption::Kind;

// In the order of the encoder's numbers.
constexpr OptionChoice modes[] = {RateOptions::cbr, RateOptions::abr, RateOptions::vbrConstrained,
                                  RateOptions::vbr};

} // namespace

constinit const FormatOption mode = RateOptions::mode(modes, "aacMatrix");
constinit const FormatOption bitRate = RateOptions::bitRate(80, 320, 256, &mode, "cbr abr vbr-constrained");
const FormatOption quality{
    .id = "quality",
    .kind = Kind::Number,
    .label = QT_TRANSLATE_NOOP("FormatOption", "Quality, 0 to 127"),
    .help = QT_TRANSLATE_NOOP("FormatOption", "Quality in mode vbr, 0 to 127 (best), 88 when not given"),
    .standard = 88,
    .maximum = 127,
    .preferenceKey = "lossyStepperLevel",
    .controlName = "stepper",
    .dependsOn = &mode,
    .onlyFor = "vbr"};

} // namespace kruv::AacOptions
