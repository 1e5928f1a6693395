// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"
#include "formats/ToolStep.h"

/// aacplusenc: its setting and the reader of what it prints.
namespace kruv::HeAacTool {

/// kbit/s
extern const FormatOption bitRate;

ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::HeAacTool
