// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "TimedProgress.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <unistd.h>

namespace kruv::mac {

std::string TimedProgress::piece(double share, double elapsedSeconds)
{
    const double total = elapsedSeconds / share;
    std::array<char, 160> text{};
    // The blanks cover what a longer piece left on the line.
    std::snprintf(text.data(), text.size(),
                  "Progress: %.1f%% (%.1f seconds remaining, %.1f seconds total)          \r", share * 100,
                  total - elapsedSeconds, total);
    return text.data();
}

void TimedProgress::update(uint64_t done, uint64_t total)
{
    if (total == 0 || done == 0) {
        return;
    }
    // 100 is kept for finish(), when the output is known to be complete.
    const double share = std::min(static_cast<double>(done) / static_cast<double>(total), 0.999);
    const int percent = static_cast<int>(share * 100);
    if (percent <= m_printed) {
        return;
    }
    m_printed = percent;
    print(share);
}

void TimedProgress::finish()
{
    print(1);
}

void TimedProgress::print(double share)
{
    if (!m_enabled) {
        return;
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - m_start;
    printMessage(piece(share, elapsed.count()));
}

void printMessage(const std::string &text)
{
    [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, text.data(), text.size());
}

} // namespace kruv::mac
