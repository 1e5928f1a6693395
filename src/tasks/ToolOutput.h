// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// What the readers of tool output share. Pure functions on one piece of output.
namespace kruv::ToolOutput {

/// Less backspaces (U+0008) at both ends.
QStringView withoutBackspaces(QStringView piece);
/// Less backspaces, then white space and line breaks, at both ends.
QStringView cleaned(QStringView piece);
/// Less a leading "<name>:", so that a "%" or ": " in a file's name is not taken for the tool's own.
QStringView withoutLeadingName(QStringView piece, QStringView name);
/// Whether the piece holds `words` that are the tool's own, not those of the file's name.
bool says(QStringView piece, QStringView words, QStringView name);
/// The number the text begins with (blanks before it allowed), 0 where there is none. Never depends on the
/// locale.
double leadingNumber(QStringView text);
/// The number that stands directly before the piece's last "%". A reader that comes late gets several updates
/// in one piece; the newest counts.
std::optional<double> lastPercentage(QStringView piece);
/// The part after the first ": " where there is one, cut before its first "%"; else the text before the first
/// "%".
QStringView percentageText(QStringView piece);

} // namespace kruv::ToolOutput
