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

const FormatOption mode{.id = "mode",
                        .kind = Kind::Choice,
                        .label = QT_TRANSLATE_NOOP("FormatOption", "Mode"),
                        .help = QT_TRANSLATE_NOOP("FormatOption", "Rate mode; cbr when not given"),
                        .choices = modes,
                        .controlName = "aacMatrix"};
const FormatOption bitRate{.id = "bitrate",
                           .kind = Kind::Rate,
                           .label = QT_TRANSLATE_NOOP("FormatOption", "Bit rate, kbit/s"),
                           .help =
                               QT_TRANSLATE_NOOP("FormatOption", "Bit rate in kbit/s; 160 when not given"),
                           .standard = 160,
                           .minimum = 80,
                           .maximum = 320,
                           .correction = 256,
                           .choices = RateOptions::usualRates,
                           .preferenceKey = "lossyComboLevel",
                           .controlName = "comboBox",
                           .dependsOn = &mode,
                           .onlyFor = "cbr abr vbr-constrained"};
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
