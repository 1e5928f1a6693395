// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/FormatOption.h"
#include "formats/ToolStep.h"

/// opusenc: its settings, its argument list and the reader of what it prints.
namespace kruv::OpusTool {

extern const FormatOption mode;
/// kbit/s
extern const FormatOption bitRate;
/// Milliseconds
extern const FormatOption frameSize;

/// `title` and `artist` are passed on where they are not empty.
QStringList encode(const ToolRequest &request, const QString &title, const QString &artist);

ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::OpusTool
