// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace kruv::tools {

/// Runs a tool's body and gives its exit status. An exception becomes "program: message" on standard error
/// and status 1. Broken pipes are reported by the writes, not by a signal.
int toolMain(const char *program, const std::function<int()> &body);

} // namespace kruv::tools
