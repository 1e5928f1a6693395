// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

/// The command line: flags in, the same tab controllers driven as the window's, progress and results out.
namespace kruv::Program {

/// Whether a command has that name.
bool isCommand(const std::string &name);

/// Runs the command that `argv` asks for and returns the exit status. A QCoreApplication must be there.
int run(int argc, char **argv);

} // namespace kruv::Program
