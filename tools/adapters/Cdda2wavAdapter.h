// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Arguments.h"
#include "OpticalDrives.h"

namespace kruv::adapters {

/// What a call of `cdda2wav` comes to.
struct Cdda2wavPlan
{
    Arguments arguments;
    std::string error; // not empty: don't run, say this
};

/// A provider name behind "dev=" becomes the drive's device file, an empty one the only drive; it is an error
/// when no drive fits. Every other device stays as it is.
Cdda2wavPlan planCdda2wav(Arguments arguments, const std::vector<OpticalDrive> &drives);

} // namespace kruv::adapters
