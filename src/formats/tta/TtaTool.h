// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ToolStep.h"

/// ttaenc: its argument list and the reader of what it prints.
namespace kruv::TtaTool {

/// The tool tells from its input's content whether to compress or to extract.
QStringList convert(const ToolRequest &request);
/// Gives each piece twice for the results.
ToolPiece read(QStringView piece, QStringView name);

} // namespace kruv::TtaTool
