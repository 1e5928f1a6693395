// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Database.h"
#include "journal/EntryEnd.h"
#include "journal/EntryRecord.h"
#include "journal/ResumedRun.h"
#include "journal/RunRecord.h"

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

namespace kruv {

/// Puts what happened into the journal's tables. Runs and entries go by numbers that their maker gave them;
/// the file has numbers of its own. One thread. Throws DatabaseError.
class JournalWriter
{
public:
    using Number = std::uint64_t;
    /// Milliseconds since 1970.
    using Time = std::int64_t;

    /// `database` is up to date.
    explicit JournalWriter(std::unique_ptr<Database> database);

    Database &database() { return *m_database; }

    void addRun(Number run, const RunRecord &record, Time when);
    /// It goes by this number from now on; its entries that wait are numbered from `first` on.
    void resumeRun(Number run, Number first, const ResumedRun &resumed, Time when);
    /// They are numbered from `first` on. A run that had ended goes on with them.
    void addEntries(Number run, Number first, const std::vector<EntryRecord> &records, Time when);
    void setRunning(Number entry, Time when);
    void end(Number entry, const EntryEnd &end, Time when);
    void expect(Number entry, const Receipt &receipt, Time when);
    void tryAgain(Number run, Number entry, Time when);
    void endRun(Number run, Time when);
    /// Entries of any run, by their numbers in the file: what they did was undone.
    void setUndone(std::int64_t entry, Time when);
    void forgetRun(std::int64_t run);
    void endUndoing(std::int64_t run);

    /// Drops runs of more than a year ago, and those of before yesterday beyond the latest thousand, with
    /// their entries; the file gives the room back. Receipts stay, but for what takes edits of more than a
    /// month ago back. Outside of a transaction.
    void prune(Time now);

private:
    struct Place
    {
        std::int64_t run = 0;
        std::int64_t entry = 0;
        std::int64_t receipt = 0; // where one is in the file before the end
        QByteArray wayBack = {};  // with it
    };
    void putReceipt(Place &place, const Receipt &receipt, Time when);
    void finishReceipt(const Place &place, const Receipt &receipt, Time when);
    void dropReceipt(Place &place);
    void addWayBack(std::int64_t receipt, const QByteArray &data);
    void addFiles(std::int64_t receipt, const char *role, const std::vector<Receipt::File> &files);

    const std::unique_ptr<Database> m_database;
    Statement m_addRun;
    Statement m_reopenRun;
    Statement m_endRun;
    Statement m_addEntry;
    Statement m_setState;
    Statement m_addReceipt;
    Statement m_finishReceipt;
    Statement m_addFile;
    Statement m_finishFile;
    Statement m_addWayBack;
    std::optional<std::int64_t> m_bytesForUndo; // in the file, where they were counted
    std::unordered_map<Number, std::int64_t> m_runs;
    std::unordered_map<Number, Place> m_entries; // that have not ended
};

} // namespace kruv
