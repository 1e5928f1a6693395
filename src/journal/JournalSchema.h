// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

namespace kruv {

class Database;

/// The tables of the journal, by numbered steps: a file that an older version wrote is brought up to date.
namespace JournalSchema {

/// The step that this version ends at.
int version();

/// Brings the file to this version, making it where it is empty. Throws std::runtime_error, a clause, for
/// what is no journal, or one of a newer version.
void bringUpToDate(Database &database);

/// Whether the file is a journal that an older version wrote.
bool isOlder(Database &database);

/// Throws the same for a file that is only to be read, and for one of an older version.
void requireReadable(Database &database);

} // namespace JournalSchema
} // namespace kruv
