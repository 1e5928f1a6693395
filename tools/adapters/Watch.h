// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kruv::adapters {

/// Waits for the end of standard input, which comes when the program that runs the tools has ended. Standard
/// output is a table of the numbers of those tools' sessions, 0 where there is none. What lives on in them is
/// asked to end, and after a while killed.
int watchTools();

} // namespace kruv::adapters
