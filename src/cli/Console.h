// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Standard streams as UTF-8 text. Write errors stop no jobs: what could not be written of standard output is
/// told by outputProblem() at the end.
namespace kruv::Console {

void writeOut(const QString &text);
void writeError(const QString &text);
/// Why standard output was not written whole; empty where it was, and where its reader went away, as in
/// kruv verify ... | head.
QString outputProblem();
/// "kruv: <line>" on standard error, in one line whatever the text holds.
void complain(const QString &line);

bool errorIsTerminal();
struct TerminalSize
{
    int columns = 80;
    int rows = 24;
};
/// Size of the terminal that standard error goes to; the usual one where that is unknown.
TerminalSize errorSize();

/// `text` with so much left out of its middle that it fits into `columns` of a terminal.
QString elidedMiddle(const QString &text, int columns);

/// A name for the screen: line breaks and other control characters are shown as "?".
QString printable(const QString &name);

} // namespace kruv::Console
