// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ToolStep.h"
#include "formats/flac/FlacCommandLine.h"

/// The flac tool's steps in conversions.
namespace kruv::FlacTool {

FlacCommandLine::EncodeRequest encodeRequest(const ToolRequest &request);

/// Encodes what the tool reads by itself, and a temporary WAV.
extern const ToolStep encode;
extern const ToolStep encodeTemporary;
/// Makes a WAV or AIFF, as the output's name says.
extern const ToolStep decode;
/// Decodes into a temporary WAV.
extern const ToolStep toWav;

} // namespace kruv::FlacTool
