// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Readers of what the codec tools print while they convert: one piece of output in, what to show of it out.
namespace kruv::CodecOutput {

struct Piece
{
    /// Where the piece has one.
    std::optional<double> percentage;
    /// What the status line says: the percentage, and what goes with it (a ratio, the seconds that remain).
    QString percentageText;
    QString detail;
    /// For the job's results.
    QString results;
    /// The tool tells of a failure that its exit status may not show.
    bool failed = false;
    /// The tool won't replace the output that is there.
    bool outputExists = false;
};

/// `name` is the last path component of the tool's input, which some tools print and which may itself look
/// like what is searched for.
using Reader = Piece (*)(QStringView piece, QStringView name);

Piece wavpack(QStringView piece, QStringView name);
/// Gives each piece twice for the results.
Piece ttaenc(QStringView piece, QStringView name);
Piece mac(QStringView piece, QStringView name);
Piece flacEncode(QStringView piece, QStringView name);
Piece flacDecode(QStringView piece, QStringView name);

/// The progress of shntool's conversions. What it says of start and end goes into the results.
Piece shntool(QStringView piece, QStringView name);
/// The same, with every piece in the results behind that.
Piece shntoolRepeating(QStringView piece, QStringView name);
/// The same, with the percentage as the tool words it.
Piece shntoolWords(QStringView piece, QStringView name);
/// Every piece in the results, once.
Piece shntoolPlain(QStringView piece, QStringView name);

} // namespace kruv::CodecOutput
