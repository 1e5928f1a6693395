// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "common/ProgressPrinter.h"

#include <algorithm>
#include <unistd.h>
#include <utility>

namespace kruv::tools {

ProgressPrinter::ProgressPrinter(Shape shape, bool enabled)
    : m_shape(std::move(shape))
    , m_enabled(enabled)
{
}

void ProgressPrinter::update(std::uint64_t done, std::uint64_t total)
{
    if (total == 0) {
        return;
    }
    const double share = static_cast<double>(done) / static_cast<double>(total);
    // 100 is kept for finish(), when the output is known to be complete.
    printUpTo(static_cast<int>(std::clamp(share * 100.0, 0.0, 99.0)));
}

void ProgressPrinter::finish()
{
    printUpTo(100);
}

void ProgressPrinter::printUpTo(int percent)
{
    while (m_printed < percent) {
        ++m_printed;
        if (!m_enabled) {
            continue;
        }
        std::string number = std::to_string(m_printed);
        number.insert(
            0, static_cast<std::size_t>(std::max(0, m_shape.width - static_cast<int>(number.size()))), ' ');
        const std::string piece =
            m_shape.before + number + m_shape.after + (m_printed == 100 ? m_shape.end : "");
        [[maybe_unused]] const ssize_t ignored = ::write(STDERR_FILENO, piece.data(), piece.size());
    }
}

} // namespace kruv::tools
