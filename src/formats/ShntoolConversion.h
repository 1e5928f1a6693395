// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "formats/ToolStep.h"

/// shntool's conversions, which several formats go by: their argument lists and the readers of what they
/// print.
namespace kruv::ShntoolConversion {

/// Decodes a source into one named WAV file, which is replaced.
QStringList decode(const ToolRequest &request);
/// Converts `source` into `folder`; existing outputs stay. `encoder` is "shn", "wav", "aiff" or a custom
/// encoder.
QStringList convert(const QString &encoder, const QString &folder, const QString &source);

/// The newest in a piece of what it prints. Names of files stand before the last ": " and may have a "%" of
/// their own.
std::optional<double> percentage(QStringView text);
/// The percentage. What it says of start and end goes into the results.
ToolPiece read(QStringView piece, QStringView name);
/// The same, with every piece in the results behind that.
ToolPiece readRepeating(QStringView piece, QStringView name);
/// The same, with the percentage as the tool words it.
ToolPiece readWords(QStringView piece, QStringView name);
/// Every piece in the results, once.
ToolPiece readPlain(QStringView piece, QStringView name);

/// Decodes into a temporary WAV.
extern const ToolStep toWav;

} // namespace kruv::ShntoolConversion
