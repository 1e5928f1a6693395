// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ToolFinder.h"

namespace kruv::adapters {

/// Runs `shntool`: replaces this process where nothing has to follow, otherwise writes stand-ins for the
/// sources it refuses, runs it on a private output folder, and moves the outputs to their places. What the
/// tool prints passes through live, less the paths of the private folders. Returns an exit status, or ends as
/// the tool ended.
int runShntool(const std::string &name, const Arguments &arguments, const ToolFinder &finder);

} // namespace kruv::adapters
