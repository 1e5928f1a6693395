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
    /// The original may go though the output has other samples on purpose.
    bool mayDeleteChanged = false;
};

} // namespace kruv
