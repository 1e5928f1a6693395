// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/Verb.h"

#include <memory>
#include <string>
#include <vector>

/// The tree of commands with their flags, and what is read off it.
namespace kruv::Commands {

/// Declares every command in `app`.
std::vector<std::unique_ptr<Verb>> declare(CLI::App &app);

/// What can stand in the place of the last of `words`, which follow the program's name: a line each, with a
/// tab and a description where there is one. ":files" and ":folders" stand for the shell's own completion.
std::string completions(const CLI::App &app, const std::vector<std::string> &words);

// Of the manual page, in roff: a line for each command, and a section for each with its flags.
std::string manualSynopsis(const CLI::App &app);
std::string manualSections(const CLI::App &app);

} // namespace kruv::Commands
