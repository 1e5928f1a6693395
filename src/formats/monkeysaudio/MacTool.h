// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ToolStep.h"

/// mac: its argument lists and the reader of what it prints.
namespace kruv::MacTool {

extern const FormatOption level;

QStringList compress(const ToolRequest &request);
QStringList extract(const ToolRequest &request);
ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::MacTool
