// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <vector>

class QWidget;

namespace kruv {

struct HistoryEntry;

namespace HistoryExport {

/// Asks where to, and writes what `kruv history find` writes for programs: CSV or JSON.
void askAndSave(QWidget *parent, const std::vector<HistoryEntry> &entries);

} // namespace HistoryExport
} // namespace kruv
