// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace kruv::tools {

/// Prints every whole percent once, rising and ending with 100, to standard error, each piece in one
/// unbuffered write, so that a reader of the pipe never sees half a number. Errors of the terminal or pipe
/// are ignored.
class ProgressPrinter
{
public:
    /// How a piece looks: before, the number padded with blanks to width, after; and end behind the last
    /// piece.
    struct Shape
    {
        std::string before;
        std::string after;
        int width = 0;
        std::string end = "\n";
    };

    /// enabled = false prints nothing at all.
    explicit ProgressPrinter(Shape shape, bool enabled = true);

    /// done of total units are finished; a total of 0 counts as nothing to do yet.
    void update(std::uint64_t done, std::uint64_t total);
    /// Prints what is left up to 100, and the end.
    void finish();

private:
    void printUpTo(int percent);

    Shape m_shape;
    bool m_enabled;
    int m_printed = -1;
};

} // namespace kruv::tools
