// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "OpticalDrives.h"

namespace kruv::adapters {

/// What `cdda2wav` is to be called with: a provider name behind "dev=" becomes the drive's device file, an
/// empty one the only drive. What fits no drive, and every other device, stays as it is, so that the tool's
/// own message names it.
Arguments cdda2wavArguments(Arguments arguments, const std::vector<OpticalDrive> &drives);

} // namespace kruv::adapters
