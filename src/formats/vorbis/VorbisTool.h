// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"
#include "formats/ToolStep.h"

/// oggenc: its settings, its argument list and the reader of what it prints.
namespace kruv::VorbisTool {

extern const FormatOption mode;
/// kbit/s, on the average
extern const FormatOption bitRate;
/// -1 to 10 (best), at variable rate
extern const FormatOption quality;

QStringList encode(const ToolRequest &request);
ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::VorbisTool
