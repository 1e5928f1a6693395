// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryRun.h"

#include <QStringList>

#include <CLI/CLI.hpp>
#include <optional>
#include <vector>

/// What is left of runs that are no conversions.
namespace kruv::CommandRest {

/// Runs that were broken off or cancelled and can't be resumed as conversions, the latest first.
std::vector<HistoryRun> runs();
/// Whether the command does the same with some of its files as with all.
bool isByFile(const HistoryRun &run);
/// Files with which the run was not done.
QStringList filesOf(const HistoryRun &run);

/// Gives those of them their old bytes back which the kill found half changed: the command reads them again.
void takeBackHalves(const HistoryRun &run);

/// The arguments of a command with other paths in place of those that were given; nothing where it is not
/// plain which these are. `root` is the program, whose options are parsed anew.
std::optional<QStringList> withPaths(CLI::App &root, const QStringList &arguments, const QStringList &paths);

/// Becomes the program with these arguments, in that folder. Throws std::runtime_error where that fails.
[[noreturn]] void become(const QStringList &arguments, const QString &folder);

} // namespace kruv::CommandRest
