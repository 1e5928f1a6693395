// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/OptionValues.h"

#include <QString>

#include <memory>

namespace kruv {

class KruvTaskResults;

/// What one conversion is to do.
struct ConversionRequest
{
    QString source;
    /// Where the output is to lie in the end.
    QString output;
    OptionValues options = {};
    /// What lies there already is replaced.
    bool mayReplace = false;
    /// Nothing, or the set of the whole command that the job's text goes into.
    std::shared_ptr<KruvTaskResults> results = {};
};

} // namespace kruv
