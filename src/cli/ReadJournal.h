// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QString>

#include <functional>

namespace kruv {

/// Has `read` ask the journal at its usual place. Throws UsageError where there is to be none, and
/// std::runtime_error with a sentence that names the file where it can't be read.
void readJournal(const std::function<void(const QString &path)> &read);

} // namespace kruv
