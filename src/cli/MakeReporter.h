// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "cli/CommonOptions.h"
#include "cli/JobReporter.h"

#include <memory>

namespace kruv {

/// The reporter that a person or a program asked for.
std::unique_ptr<JobReporter> makeReporter(const CommonOptions &options);

} // namespace kruv
