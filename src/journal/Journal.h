// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/JournalWriter.h"

#include <QCoreApplication>
#include <QObject>
#include <QString>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace kruv {

class DatabaseError;

/// The memory of what was done: runs with their jobs, how each ended, and receipts for what they made. It is
/// written by a thread of its own, in batches, so what happened in the last half second is lost when the
/// program is killed; the files themselves come first, and the journal follows. It never stands in the way:
/// where it can't be written, that is said once, and the rest of the process goes unrecorded. Main thread.
class Journal
{
    Q_DECLARE_TR_FUNCTIONS(kruv::Journal)
public:
    using Number = JournalWriter::Number;
    /// Called on the main thread, with sentences for a person.
    using Complaint = std::function<void(const QString &)>;

    /// Nothing is opened before there is something to write. Without a path nothing is recorded.
    Journal(const QString &path, Complaint complain);
    /// Writes what is left.
    ~Journal();
    Journal(const Journal &) = delete;
    Journal &operator=(const Journal &) = delete;

    Number addRun(const RunRecord &record);
    /// Returns the first one's number; the others follow it. They are written at once; who must not come
    /// before them waits until they are (waitUntilWritten).
    Number addEntries(Number run, std::vector<EntryRecord> records);
    /// One that is in the file goes on. Returns its number; those of its entries that wait follow it.
    Number resumeRun(const ResumedRun &resumed);
    void setRunning(Number entry);
    void end(Number entry, EntryEnd end);
    /// What the entry is about to do, for what a kill in its middle must not leave without a way back. The
    /// receipt of its end takes its place. Any thread.
    void expect(Number entry, Receipt receipt);
    /// An entry that failed and left no receipt waits once more, and so its run goes on.
    void tryAgain(Number run, Number entry);
    void endRun(Number run);
    /// What an entry of any run did, by its number in the file, was undone.
    void setUndone(std::int64_t entry);
    /// A run, by its number in the file, is not to be resumed any more.
    void forgetRun(std::int64_t run);
    /// A run, by its number in the file, may be undone by others again.
    void endUndoing(std::int64_t run);

    /// Whether anything is recorded.
    bool isOn();
    /// Waits until what was said so far is in the file, a second at most: for what must not come before, for
    /// who reads the file, and for a program that is about to stand still. Who waits at the same time shares
    /// a transaction. Any thread.
    void waitUntilWritten();
    /// Writes what is left and records nothing more.
    void finish();

private:
    using Time = JournalWriter::Time;
    using Change = std::function<void(JournalWriter &to, Time when)>;
    struct Dated
    {
        Change change;
        Time when;
    };

    void add(Change change);
    void hurry();
    void work();
    void write(const std::vector<Dated> &changes);
    void openFile();
    QString reasonFor(const DatabaseError &error) const;
    void prune();
    void giveUp(const QString &reason);
    void say(const QString &sentence);
    void complain();
    bool isPatient();

    const QString m_path;
    const Complaint m_complain;
    Number m_nextNumber = 1;

    std::mutex m_lock;
    std::condition_variable m_wake;
    std::condition_variable m_written;
    std::vector<Dated> m_changes;
    std::vector<QString> m_sentences; // yet to be said on the main thread
    QObject m_context;                // what is posted there goes with it
    std::uint64_t m_said = 0;         // changes so far
    std::uint64_t m_inFile = 0;       // of these
    bool m_urgent = false;
    bool m_waits = true; // for them to be in the file
    bool m_closing = false;
    bool m_isOff = false;

    // The thread's own.
    std::unique_ptr<JournalWriter> m_writer;
    std::chrono::steady_clock::time_point m_batchBegan;
    bool m_pruned = false;
    std::thread m_thread;
};

} // namespace kruv
