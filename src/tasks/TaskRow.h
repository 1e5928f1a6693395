// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

namespace kruv {

/// The colours a status row's text may take; the view maps them to tones that suit its palette.
enum class RowColor { Default, Red, DarkGreen };

struct RowText
{
    QString text;
    RowColor color = RowColor::Default;
};

/// A status row's bar: 0.0 to 100.0 percent while determinate.
struct RowProgress
{
    double value = 0.0;
    bool indeterminate = false;
    bool animated = false;
    bool hidden = true;
};

struct RowButton
{
    bool hidden = true;
};

} // namespace kruv
