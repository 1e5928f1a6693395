// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "journal/HistoryRun.h"

#include <QString>
#include <QStringList>

/// What of the history is told to a person, in words.
namespace kruv::HistoryWords {

/// What HistoryStates gives, as a person reads it.
QString status(const QString &status);
/// As it was typed, so that it can be typed again, or the window's tab.
QString command(const HistoryRun &run);
QString counts(const HistoryRun &run);
/// Source and output.
QString paths(const HistoryEntry &entry);
/// What is worth knowing of a job besides: proof, what became of its original, whether its files are still as
/// it left them. Looks at the files.
QStringList notes(const HistoryEntry &entry);

} // namespace kruv::HistoryWords
