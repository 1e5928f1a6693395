// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/JournalWriter.h"

#include "base/Version.h"
#include "journal/JournalWords.h"
#include "journal/Transaction.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace kruv {

namespace {

constexpr JournalWriter::Time day = JournalWriter::Time{24} * 60 * 60 * 1000;
constexpr JournalWriter::Time longestAge = 365 * day;
constexpr JournalWriter::Time longestUndo = 31 * day;
constexpr std::int64_t mostBytesForUndo = std::int64_t{1} << 30; // of all runs; the oldest make room

QString asText(const QStringList &arguments)
{
    return QString::fromUtf8(
        QJsonDocument(QJsonArray::fromStringList(arguments)).toJson(QJsonDocument::Compact));
}

} // namespace

JournalWriter::JournalWriter(std::unique_ptr<Database> database)
    : m_database(std::move(database))
    , m_addRun(
          m_database->prepare("INSERT INTO runs (started, command, arguments, folder, process, version, plan)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?)"))
    , m_reopenRun(m_database->prepare("UPDATE runs SET ended = NULL WHERE id = ?"))
    , m_endRun(m_database->prepare("UPDATE runs SET ended = ? WHERE id = ?"))
    , m_addEntry(m_database->prepare(
          "INSERT INTO entries (run, source, output, action, keeps, state, reason, changed)"
          " VALUES (?, ?, ?, ?, ?, 'waiting', '', ?)"))
    , m_setState(m_database->prepare("UPDATE entries SET state = ?, reason = ?, changed = ? WHERE id = ?"))
    , m_addReceipt(
          m_database->prepare("INSERT INTO receipts (run, entry, finished, seconds, proof, digest, decoder)"
                              " VALUES (?, ?, ?, ?, ?, ?, ?)"))
    , m_finishReceipt(m_database->prepare("UPDATE receipts SET finished = ?, seconds = ? WHERE id = ?"))
    , m_addFile(m_database->prepare(
          "INSERT INTO receipt_files (receipt, role, path, size, seconds, nanoseconds, fate)"
          " VALUES (?, ?, ?, ?, ?, ?, ?)"))
    , m_finishFile(m_database->prepare("UPDATE receipt_files SET size = ?, seconds = ?, nanoseconds = ?"
                                       " WHERE receipt = ? AND role = 'output' AND path = ?"))
    , m_addWayBack(m_database->prepare("INSERT INTO ways_back (receipt, data) VALUES (?, ?)"))
{
}

void JournalWriter::addRun(Number run, const RunRecord &record, Time when)
{
    m_addRun
        .with(when, record.command, asText(record.arguments), record.folder, record.process, shortVersion(),
              record.plan)
        .run();
    m_runs[run] = m_database->lastRow();
}

void JournalWriter::addEntries(Number run, Number first, const std::vector<EntryRecord> &records, Time when)
{
    const std::int64_t row = m_runs.at(run);
    m_reopenRun.with(row).run();
    for (const EntryRecord &record : records) {
        m_addEntry
            .with(row, record.source, record.output, QString::fromLatin1(JournalWords::of(record.action)),
                  record.keepReason, when)
            .run();
        m_entries[first++] = {row, m_database->lastRow()};
    }
}

void JournalWriter::resumeRun(Number run, Number first, const ResumedRun &resumed, Time when)
{
    m_runs[run] = resumed.run;
    m_reopenRun.with(resumed.run).run();
    for (const std::int64_t row : resumed.waiting) {
        m_setState.with(QString::fromLatin1(JournalWords::waiting), QString(), when, row).run();
        m_entries[first++] = {resumed.run, row};
    }
    for (const std::int64_t row : resumed.done) {
        m_setState.with(QString::fromLatin1(JournalWords::of(EntryEnd::State::Done)), QString(), when, row)
            .run();
    }
    Statement drop = m_database->prepare("DELETE FROM entries WHERE id = ?");
    for (const std::int64_t row : resumed.dropped) {
        drop.with(row).run();
    }
}

void JournalWriter::setRunning(Number entry, Time when)
{
    m_setState.with(QString::fromLatin1(JournalWords::running), QString(), when, m_entries.at(entry).entry)
        .run();
}

void JournalWriter::end(Number entry, const EntryEnd &end, Time when)
{
    Place &place = m_entries.at(entry);
    m_setState.with(QString::fromLatin1(JournalWords::of(end.state)), end.reason, when, place.entry).run();
    if (end.receipt && place.receipt != 0 && end.receipt->wayBack == place.wayBack) {
        finishReceipt(place, *end.receipt, when);
    } else if (end.receipt) {
        putReceipt(place, *end.receipt, when);
    } else if (end.state == EntryEnd::State::Failed && !place.wayBack.isEmpty()) {
        dropReceipt(place); // the file is as it was; files of a rename that failed may have new names
    }
    if (end.state != EntryEnd::State::Failed || end.receipt) { // which can't be tried again
        m_entries.erase(entry);
    }
}

void JournalWriter::expect(Number entry, const Receipt &receipt, Time when)
{
    putReceipt(m_entries.at(entry), receipt, when);
}

/// In place of one that was expected.
void JournalWriter::putReceipt(Place &place, const Receipt &receipt, Time when)
{
    if (place.receipt != 0) {
        dropReceipt(place);
    }
    m_addReceipt
        .with(place.run, place.entry, when, receipt.seconds, receipt.proof, receipt.digest, receipt.decoder)
        .run();
    place.receipt = m_database->lastRow();
    place.wayBack = receipt.wayBack;
    addFiles(place.receipt, "source", receipt.sources);
    addFiles(place.receipt, "output", receipt.outputs);
    if (!receipt.wayBack.isEmpty()) {
        addWayBack(place.receipt, receipt.wayBack);
    }
}

/// All came as expected: how long it took and the files' dates are new.
void JournalWriter::finishReceipt(const Place &place, const Receipt &receipt, Time when)
{
    m_finishReceipt.with(when, receipt.seconds, place.receipt).run();
    for (const Receipt::File &file : receipt.outputs) {
        m_finishFile
            .with(file.stamp.size, file.stamp.seconds, file.stamp.nanoseconds, place.receipt, file.path)
            .run();
    }
}

void JournalWriter::dropReceipt(Place &place)
{
    m_database->prepare("DELETE FROM receipts WHERE id = ?").with(place.receipt).run();
    m_bytesForUndo.reset();
    place.receipt = 0;
    place.wayBack.clear();
}

void JournalWriter::addWayBack(std::int64_t receipt, const QByteArray &data)
{
    if (!m_bytesForUndo) {
        m_bytesForUndo = m_database->number("SELECT coalesce(sum(length(data)), 0) FROM ways_back");
    }
    m_addWayBack.with(receipt, data).run();
    *m_bytesForUndo += data.size();
    while (*m_bytesForUndo > mostBytesForUndo) {
        const std::int64_t oldest = m_database->number("SELECT min(receipt) FROM ways_back");
        if (oldest == receipt) {
            break;
        }
        Statement size = m_database->prepare("SELECT length(data) FROM ways_back WHERE receipt = ?");
        *m_bytesForUndo -= size.with(oldest).step() ? size.integer(0) : 0;
        m_database->prepare("DELETE FROM ways_back WHERE receipt = ?").with(oldest).run();
    }
}

void JournalWriter::addFiles(std::int64_t receipt, const char *role, const std::vector<Receipt::File> &files)
{
    for (const Receipt::File &file : files) {
        m_addFile
            .with(receipt, QString::fromLatin1(role), file.path, file.stamp.size, file.stamp.seconds,
                  file.stamp.nanoseconds, QString::fromLatin1(JournalWords::of(file.fate)))
            .run();
    }
}

void JournalWriter::tryAgain(Number run, Number entry, Time when)
{
    m_reopenRun.with(m_runs.at(run)).run();
    m_setState.with(QString::fromLatin1(JournalWords::waiting), QString(), when, m_entries.at(entry).entry)
        .run();
}

void JournalWriter::endRun(Number run, Time when)
{
    m_endRun.with(when, m_runs.at(run)).run();
}

void JournalWriter::setUndone(std::int64_t entry, Time when)
{
    m_setState.with(QString::fromLatin1(JournalWords::undone), QString(), when, entry).run();
}

void JournalWriter::forgetRun(std::int64_t run)
{
    m_database->prepare("UPDATE runs SET forgotten = 1 WHERE id = ?").with(run).run();
}

void JournalWriter::endUndoing(std::int64_t run)
{
    m_database->prepare("UPDATE runs SET undoing = '' WHERE id = ?").with(run).run();
}

void JournalWriter::prune(Time now)
{
    constexpr int mostRuns = 1000;
    Transaction transaction(*m_database);
    m_database
        ->prepare("DELETE FROM runs WHERE started < ? OR (started < ? AND id NOT IN"
                  " (SELECT id FROM runs ORDER BY id DESC LIMIT ?))")
        .with(now - longestAge, now - day, mostRuns)
        .run();
    m_database->prepare("DELETE FROM ways_back WHERE receipt IN (SELECT id FROM receipts WHERE finished < ?)")
        .with(now - longestUndo)
        .run();
    transaction.commit();
    m_database->execute("PRAGMA incremental_vacuum");
}

} // namespace kruv
