// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "ToolFinder.h"

namespace kruv::adapters {

/// Runs `mkisofs`. A DVD-Audio image is written under a temporary name beside its place, checked, completed,
/// and only then moved there. Returns the exit status; with a plain call, or when a signal ends the tool, it
/// does not return.
int runMkisofs(const std::string &name, const Arguments &arguments, const ToolFinder &finder);

} // namespace kruv::adapters
