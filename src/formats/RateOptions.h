// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"

#include <QtGlobal>

/// What the lossy formats' settings have in common.
namespace kruv::RateOptions {

inline constexpr OptionChoice cbr{"cbr", "CBR"};
inline constexpr OptionChoice abr{"abr", "ABR"};
inline constexpr OptionChoice vbr{"vbr", "VBR"};
inline constexpr OptionChoice vbrConstrained{"vbr-constrained",
                                             QT_TRANSLATE_NOOP("FormatOption", "VBR Constrained")};

/// Bit rates in kbit/s that are proposed.
inline constexpr OptionChoice usualRates[] = {{"96", "96"},   {"112", "112"}, {"128", "128"}, {"160", "160"},
                                              {"192", "192"}, {"224", "224"}, {"256", "256"}, {"320", "320"}};

/// The rate mode of an encoder whose first choice is CBR.
constexpr FormatOption mode(std::span<const OptionChoice> modes, const char *controlName)
{
    return {.id = "mode",
            .kind = FormatOption::Kind::Choice,
            .label = QT_TRANSLATE_NOOP("FormatOption", "Mode"),
            .help = QT_TRANSLATE_NOOP("FormatOption", "Rate mode; cbr when not given"),
            .choices = modes,
            .controlName = controlName};
}

/// From `minimum` to `maximum` kbit/s; what lies beyond becomes `correction`. Where it matters in some modes
/// only, `modes` has their ids, blanks between.
constexpr FormatOption bitRate(int minimum, int maximum, int correction, const FormatOption *mode = nullptr,
                               const char *modes = nullptr)
{
    return {.id = "bitrate",
            .kind = FormatOption::Kind::Rate,
            .label = QT_TRANSLATE_NOOP("FormatOption", "Bit rate, kbit/s"),
            .help = QT_TRANSLATE_NOOP("FormatOption", "Bit rate in kbit/s; 160 when not given"),
            .standard = 160,
            .minimum = minimum,
            .maximum = maximum,
            .correction = correction,
            .choices = usualRates,
            .preferenceKey = "lossyComboLevel",
            .controlName = "comboBox",
            .dependsOn = mode,
            .onlyFor = modes};
}

} // namespace kruv::RateOptions
