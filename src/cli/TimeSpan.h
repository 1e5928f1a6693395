// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace kruv::TimeSpan {

/// "8h", "30m", "90s", or several of them, the largest first: "1h30m". Nothing for other texts, a bare number
/// among them, which one would take for hours and another for seconds; and for less than a second or more
/// than twenty days.
std::optional<std::chrono::seconds> fromText(const QString &text);

} // namespace kruv::TimeSpan
