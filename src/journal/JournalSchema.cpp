// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/JournalSchema.h"

#include "journal/Database.h"
#include "journal/Transaction.h"

#include <QCoreApplication>

#include <iterator>
#include <stdexcept>

namespace kruv::JournalSchema {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::JournalSchema)
};

// "KRUV", so that no other program's file is taken for a journal.
constexpr const char *markAsOurs = "PRAGMA application_id = 1263686998";
constexpr std::int64_t ourMark = 1263686998;

// A step that was released is never changed; what is to be different becomes a further step. Numbers are
// never given twice (AUTOINCREMENT): receipts outlive the runs and entries that they name.
constexpr const char *steps[] = {
    R"(
CREATE TABLE runs (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    started INTEGER NOT NULL, -- times are milliseconds since 1970
    ended INTEGER,
    command TEXT NOT NULL,
    arguments TEXT NOT NULL, -- a JSON list
    folder TEXT NOT NULL,
    process TEXT NOT NULL,
    version TEXT NOT NULL
);
CREATE TABLE entries (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    run INTEGER NOT NULL REFERENCES runs ON DELETE CASCADE,
    source TEXT NOT NULL,
    output TEXT NOT NULL,
    action TEXT NOT NULL,
    state TEXT NOT NULL,
    reason TEXT NOT NULL,
    changed INTEGER NOT NULL
);
CREATE INDEX entries_by_run ON entries (run);
CREATE TABLE receipts (
    id INTEGER PRIMARY KEY,
    run INTEGER NOT NULL,
    entry INTEGER NOT NULL,
    finished INTEGER NOT NULL,
    seconds REAL NOT NULL,
    proof TEXT NOT NULL,
    digest TEXT NOT NULL,
    decoder TEXT NOT NULL
);
CREATE INDEX receipts_by_entry ON receipts (entry);
CREATE TABLE receipt_files (
    id INTEGER PRIMARY KEY,
    receipt INTEGER NOT NULL REFERENCES receipts ON DELETE CASCADE,
    role TEXT NOT NULL, -- source or output
    path TEXT NOT NULL,
    size INTEGER NOT NULL,
    seconds INTEGER NOT NULL,
    nanoseconds INTEGER NOT NULL,
    fate TEXT NOT NULL
);
CREATE INDEX receipt_files_by_receipt ON receipt_files (receipt);
)",
    R"(
ALTER TABLE runs ADD COLUMN plan TEXT NOT NULL DEFAULT '';
ALTER TABLE runs ADD COLUMN forgotten INTEGER NOT NULL DEFAULT 0; -- not to be resumed any more
ALTER TABLE entries ADD COLUMN keeps TEXT NOT NULL DEFAULT '';
)",
    R"(
CREATE INDEX receipt_files_by_path ON receipt_files (path);
)",
    R"(
CREATE TABLE ways_back (
    receipt INTEGER PRIMARY KEY REFERENCES receipts ON DELETE CASCADE,
    data BLOB NOT NULL
);
)",
    R"(
ALTER TABLE runs ADD COLUMN undoing TEXT NOT NULL DEFAULT ''; -- the process that takes it back
)",
};

void requireOurs(Database &database)
{
    const bool isEmpty = database.number("SELECT count(*) FROM sqlite_schema") == 0;
    if (!isEmpty && database.number("PRAGMA application_id") != ourMark) {
        throw std::runtime_error(Text::tr("it is a database of another program").toStdString());
    }
    if (database.number("PRAGMA user_version") > version()) {
        throw std::runtime_error(Text::tr("it was written by a newer version of Kruv").toStdString());
    }
}

} // namespace

int version()
{
    return static_cast<int>(std::size(steps));
}

void bringUpToDate(Database &database)
{
    requireOurs(database);
    if (database.number("PRAGMA user_version") == version()) {
        return;
    }
    Transaction transaction(database);
    requireOurs(database); // another process may have been here first
    for (auto step = database.number("PRAGMA user_version"); step < version(); ++step) {
        database.execute(steps[step]);
    }
    database.execute(markAsOurs);
    database.execute(("PRAGMA user_version = " + std::to_string(version())).c_str());
    transaction.commit();
}

bool isOlder(Database &database)
{
    return database.number("PRAGMA application_id") == ourMark &&
           database.number("PRAGMA user_version") < version();
}

void requireReadable(Database &database)
{
    requireOurs(database);
    if (isOlder(database)) {
        throw std::runtime_error(
            Text::tr("it was written by an older version of Kruv and can't be brought up to date")
                .toStdString());
    }
}

} // namespace kruv::JournalSchema
