// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/HistoryEntry.h"
#include "journal/HistoryRun.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace kruv {

class Database;
class Statement;

/// Reads the journal. Throws std::runtime_error in words of the file or a clause for a person.
class History
{
public:
    using RunVisitor = std::function<void(const HistoryRun &)>;
    using EntryVisitor = std::function<void(const HistoryEntry &)>;

    /// A file that is not there reads as one in which nothing is recorded.
    explicit History(const QString &path);
    ~History();

    /// The latest first.
    void forEachRun(const RunVisitor &visit) const;
    /// Those that are left were neither done nor cancelled: a kill or the end of the program came before. The
    /// last ones did something that can be taken back.
    enum class Jobs { NotDone, NotDoneOrFailed, Left, Undoable };
    /// The latest first. Those with jobs that were not done are left out where they are forgotten.
    void forEachRunWith(Jobs jobs, const RunVisitor &visit) const;
    std::optional<HistoryRun> run(std::int64_t id) const;
    /// In the order of the run's list.
    void forEachEntryOf(std::int64_t run, const EntryVisitor &visit) const;

    /// What takes back what the entry's job did in place; empty where nothing is kept.
    QByteArray wayBackOf(std::int64_t entry) const;
    /// The latest job that made this file; nothing where none did, or where its run is forgotten.
    std::optional<HistoryEntry> makerOf(const QString &output) const;

    /// The latest runs that have a plan (RunRecord), `most` of them, the latest first.
    void forEachPlan(int most, const std::function<void(std::int64_t run, const QString &plan)> &visit) const;
    /// What one file cost that was made of one other.
    struct Conversion
    {
        QString source;
        std::int64_t sourceSize = 0; ///< bytes
        std::int64_t outputSize = 0;
        double seconds = 0.0;
    };
    /// The latest ones of a run, `most` of them.
    void forEachConversionOf(std::int64_t run, int most,
                             const std::function<void(const Conversion &)> &visit) const;

    struct Question
    {
        enum class About {
            /// A part of a file's path, in any case.
            Text,
            /// A file, or a folder and all below it; absolute.
            Path,
            /// That of an audio's samples, in hexadecimal digits.
            Digest
        };
        About about = About::Text;
        QString text = {};

        /// What a person asks who types this: a digest, the path of something that is there or has a slash,
        /// or a part of a path.
        static Question from(const QString &given);
    };
    /// Every job that read or made such a file, the latest first; also jobs of runs that are forgotten, of
    /// which the receipt is left.
    void find(const Question &question, const EntryVisitor &visit) const;

private:
    static void readFiles(HistoryEntry &entry, Statement &rows);
    void visitRuns(const std::string &condition, const RunVisitor &visit) const;
    void visitEntries(Statement &rows, const EntryVisitor &visit) const;

    std::unique_ptr<Database> m_database;
};

} // namespace kruv
