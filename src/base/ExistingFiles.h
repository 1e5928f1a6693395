// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv {

/// What becomes of outputs whose names are taken.
enum class ExistingFiles {
    /// Nothing is made for them.
    Skip,
    /// Whole new files take their places.
    Replace,
    /// The new ones get a number.
    KeepBoth,
    /// Those are refused, and the others made.
    Refuse
};

} // namespace kruv
