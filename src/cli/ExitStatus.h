// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv {

/// What the command line ends with.
enum ExitStatus : int {
    Success = 0,
    /// A job failed, or a verification did not match.
    Failure = 1,
    /// Wrong usage, or a question that no flag answered.
    Usage = 2,
    Cancelled = 130
};

} // namespace kruv
