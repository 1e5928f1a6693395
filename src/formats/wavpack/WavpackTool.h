// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ToolStep.h"

/// WavPack's tools: argument lists and the reader of what they print.
namespace kruv::WavpackTool {

extern const FormatOption mode;

QStringList encode(const ToolRequest &request);
QStringList decode(const ToolRequest &request);
QStringList decodeForAiff(const ToolRequest &request);
QStringList decodeToTemporary(const ToolRequest &request);

ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::WavpackTool
