// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/OptionValues.h"

#include <QString>

#include <cstdint>

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
    /// What becomes of an output that may have been made of this source before, by this very job before the
    /// program was killed or by another process. It has to hold the source's audio, else the job fails, but
    /// for the last of these.
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
    /// Of an output that stays: an original that is gone was deleted once its output was proven, where that
    /// is no older than this, in milliseconds since 1970; 0: never.
    std::int64_t goneSince = 0;
    /// The original may go though the output has other samples on purpose.
    bool mayDeleteChanged = false;
};

} // namespace kruv
