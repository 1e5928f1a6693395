// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace kruv::tools {

/// Makes broken pipes and a limit on file sizes errors of the writes instead of deadly signals, and occupies
/// standard streams that are closed. Call first of all.
void prepareProcess();

/// Runs a tool's body in a prepared process and gives its exit status. An exception becomes "program:
/// message" on standard error and status 1.
int toolMain(const char *program, const std::function<int()> &body);

} // namespace kruv::tools
