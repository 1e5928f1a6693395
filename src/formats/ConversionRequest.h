// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/OptionValues.h"

#include <QString>

namespace kruv {

/// What one conversion is to do.
struct ConversionRequest
{
    QString source;
    /// Where the output is to lie in the end.
    QString output;
    OptionValues options = {};
    /// What lies there already is replaced.
    bool mayReplace = false;
    /// What becomes of an output that may have been made of this source before. It has to hold the source's
    /// audio, else the job fails, but for the last of these.
    enum class Earlier {
        None,
        /// It is made anew and replaced.
        Replaced,
        /// It stays, and nothing is made.
        Kept,
        /// Where it holds the source's audio, it gets the source's tags; else it is made anew.
        Renewed
    };
    Earlier earlier = Earlier::None;
    /// The original may go though the output has other samples on purpose.
    bool mayDeleteChanged = false;
};

} // namespace kruv
