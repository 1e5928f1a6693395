// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/Format.h"
#include "formats/FormatOption.h"
#include "formats/OptionValues.h"
#include "tabs/ComboControl.h"
#include "tabs/Controls.h"

#include <memory>
#include <vector>

namespace kruv {

class Preferences;

/// The settings of the formats that a tab makes: a control for each, as its declaration says. Rates that are
/// kept under one preference share one control, so that a bit rate stays when the format changes.
class FormatControls
{
public:
    FormatControls(const QList<const Format *> &formats, Preferences &preferences);

    /// Formats as a choice has them.
    static QList<ChoiceControl::Choice> choicesOf(const QList<const Format *> &formats);

    Control &control(const FormatOption &option) const;
    ToggleControl &toggle(const FormatOption &option) const;
    NumberControl &number(const FormatOption &option) const;
    ChoiceControl &choice(const FormatOption &option) const;
    ComboControl &rate(const FormatOption &option) const;

    /// What is chosen of a format's settings.
    OptionValues values(const Format &format) const;
    int value(const FormatOption &option) const;
    /// Whether a setting matters now: its format is the chosen one, and so is what it depends on.
    bool isRelevant(const FormatOption &option, const Format *chosen) const;
    /// Gives a shared rate the proposals and the bounds of this declaration.
    void fitRate(const FormatOption &option);

private:
    struct Entry
    {
        const FormatOption *option;
        std::shared_ptr<Control> control;
    };
    std::shared_ptr<Control> made(const FormatOption &option) const;

    std::vector<Entry> m_entries;
};

} // namespace kruv
