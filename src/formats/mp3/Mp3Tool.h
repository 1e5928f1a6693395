// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"
#include "formats/OptionValues.h"
#include "formats/ToolStep.h"

#include <QStringList>
#include <QStringView>

/// lame: its settings, its argument lists, also behind shntool, and the reader of its progress.
namespace kruv::Mp3Tool {

extern const FormatOption mode;
/// kbit/s
extern const FormatOption bitRate;
/// 0 (best) to 9, at variable rate
extern const FormatOption quality;

/// What the preferences say.
struct Tuning
{
    bool jointStereo = false;
    /// lame's choice of algorithms, 0 (best) to 9.
    int qValue = 0;
};

QStringList encode(const ToolRequest &request, const Tuning &tuning);
/// shntool decodes the source and pipes it into lame; an existing output stays.
QStringList encodeByShntool(const ToolRequest &request, const Tuning &tuning);

ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::Mp3Tool
