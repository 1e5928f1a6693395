// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Database.h"

#include <QString>

#include <memory>

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

/// Null where there is none. Throws the same; changes nothing.
std::unique_ptr<Database> openToRead(const QString &path);

/// Gives a damaged file another name, so that the next journal begins anew. Returns that name; empty where
/// the file is sound after all, because another process was faster.
QString moveAside(const QString &path);

} // namespace kruv::JournalFile
