// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

namespace kruv::mac {

/// Prints "Progress: 12.5% (3.2 seconds remaining, 5.3 seconds total)" to standard error, once for every
/// whole percent and each in one unbuffered write, so that a reader of the pipe never sees half a line.
class TimedProgress
{
public:
    /// Prints nothing at all when not `enabled`.
    explicit TimedProgress(bool enabled = true)
        : m_enabled(enabled)
    {
    }

    /// `done` of `total` units are finished; nothing is printed while `total` is 0 (not known).
    void update(uint64_t done, uint64_t total);
    /// Prints the last piece.
    void finish();

    /// One piece, as printed, for a share done (above 0, up to 1) after that many seconds.
    static std::string piece(double share, double elapsedSeconds);

private:
    void print(double share);

    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    bool m_enabled;
    int m_printed = 0; ///< the last whole percent
};

/// Writes text to standard error in one piece. Errors of the terminal or pipe are ignored.
void printMessage(const std::string &text);

} // namespace kruv::mac
