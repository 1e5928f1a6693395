// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryRun.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace kruv {

/// Has `read` ask the journal at its usual place. Throws UsageError where there is to be none, and
/// std::runtime_error with a sentence that names the file where it can't be read.
void readJournal(const std::function<void(const QString &path)> &read);

/// A run of the journal that no process is at. Throws UsageError where there is none of that number, or it
/// still goes on.
HistoryRun endedRun(std::int64_t number);

} // namespace kruv
