// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

/// Standard streams as UTF-8 text. Write errors are ignored: a closed pipe must not stop the jobs.
namespace kruv::Console {

void writeOut(const QString &text);
void writeError(const QString &text);
/// "kruv: <line>" on standard error.
void complain(const QString &line);

bool errorIsTerminal();
/// Columns of the terminal that standard error goes to; 80 where that is unknown.
int errorWidth();

/// A name for the screen: line breaks and other control characters are shown as "?".
QString printable(const QString &name);

} // namespace kruv::Console
