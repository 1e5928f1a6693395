// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv {

/// How many characters to cut from a name, and from which end of it.
struct TrimCharsObject
{
    int number = 0;
    /// Index of the chosen end: 0 the beginning, 1 the end.
    int position = 0;
};

} // namespace kruv
