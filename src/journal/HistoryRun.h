// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace kruv {

/// A run as the journal has it. Times are milliseconds since 1970.
struct HistoryRun
{
    std::int64_t id = 0;
    std::int64_t started = 0;
    /// Nothing while it goes on, and for one that was broken off.
    std::optional<std::int64_t> ended = {};
    QString command = {};
    QStringList arguments = {};
    QString folder = {};
    QString process = {};
    QString version = {}; ///< of the program
    QString plan = {};    ///< as in RunRecord
    QString undoing = {}; ///< the process that takes it back, or died in the middle of that

    // Of its jobs.
    std::int64_t all = 0;
    std::int64_t done = 0;
    std::int64_t failed = 0;
    std::int64_t cancelled = 0;
    std::int64_t undone = 0;
};

} // namespace kruv
