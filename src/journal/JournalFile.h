// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Database.h"

#include <QString>

#include <memory>

namespace kruv {
struct HistoryRun;
}

/// Where the journal lies, and how its file is opened.
namespace kruv::JournalFile {

/// The state folder's, or what KRUV_JOURNAL names; empty where that is set to nothing: then nothing is
/// recorded.
QString usualPath();

struct Opened
{
    std::unique_ptr<Database> database;
    /// Where the file went that was there but damaged; empty where it was sound.
    QString damagedOne;
};
/// Makes the file, and its folder, where there is none. Throws std::runtime_error, a clause that says why it
/// can't be used.
Opened openToWrite(const QString &path, const Database::Patience &patience);

/// Null where there is none. Throws the same; what an older version wrote is brought up to date where it may
/// be written.
std::unique_ptr<Database> openToRead(const QString &path);

/// Makes a stopped run this process's. False where it is another one's by now. Throws the same.
bool take(const QString &path, const HistoryRun &run, const QString &process);
/// Makes this process the one that takes the run back. False where another one was faster. Throws the same.
bool takeToUndo(const QString &path, const HistoryRun &run, const QString &process);
/// A run that is not to be resumed any more. Throws the same.
void forget(const QString &path, const HistoryRun &run);

/// Gives a damaged file another name, so that the next journal begins anew. Returns that name; empty where
/// the file is sound after all, because another process was faster.
QString moveAside(const QString &path);

} // namespace kruv::JournalFile
