// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <span>

namespace kruv {

/// One of the choices of an option.
struct OptionChoice
{
    /// As flags and stored plans have it.
    const char *id;
    /// As the window shows it.
    const char *label;
};

/// A setting of a format, declared once: the window's column, the flags with their help, the manual, the
/// completions and the jobs all go by it.
struct FormatOption
{
    enum class Kind {
        /// 0 or 1.
        Toggle,
        /// From `minimum` to `maximum` in steps.
        Number,
        /// The value is the index of one of `choices`.
        Choice,
        /// Any number from `minimum` to `maximum`; `choices` are those that are proposed.
        Rate
    };
    /// The flag less its dashes.
    const char *id;
    Kind kind;
    /// The window's label, with its mnemonic.
    const char *label;
    /// What it does, in a line.
    const char *help;
    int standard = 0;
    int minimum = 0;
    int maximum = 1;
    int step = 1;
    /// What a rate beyond the bounds becomes.
    int correction = 0;
    std::span<const OptionChoice> choices = {};
    /// Where the window keeps the last choice, or nullptr.
    const char *preferenceKey = nullptr;
    /// Of the control in the window.
    const char *controlName = nullptr;
    /// Where it matters for some choices of another option only: that option, and the ids, blanks between.
    const FormatOption *dependsOn = nullptr;
    const char *onlyFor = nullptr;
};

} // namespace kruv
