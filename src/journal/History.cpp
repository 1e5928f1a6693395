// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/History.h"

#include "journal/Database.h"
#include "journal/JournalFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

namespace kruv {

namespace {

constexpr const char *runColumns =
    "SELECT r.id, r.started, r.ended, r.command, r.arguments, r.folder, r.process, r.version, r.plan, "
    "r.undoing, count(e.id),"
    " coalesce(sum(e.state = 'complete'), 0), coalesce(sum(e.state = 'error'), 0),"
    " coalesce(sum(e.state = 'canceled'), 0), coalesce(sum(e.state = 'undone'), 0)"
    " FROM runs r LEFT JOIN entries e ON e.run = r.id";

// The columns that visitEntries() reads, with the latest receipt of what was made more than once. A receipt
// whose entry is forgotten stands for a job that was done.
constexpr const char *entryColumns =
    "SELECT e.run, r.command, e.changed, e.source, e.output, e.action, e.state, e.reason,"
    " c.id, c.seconds, c.proof, c.digest, c.decoder, r.process, e.id,"
    " e.keeps, EXISTS (SELECT 1 FROM ways_back WHERE receipt = c.id)"
    " FROM entries e JOIN runs r ON r.id = e.run"
    " LEFT JOIN receipts c ON c.id = (SELECT max(id) FROM receipts WHERE entry = e.id)";
constexpr const char *forgottenColumns =
    "SELECT c.run, '', c.finished, '', '', 'make', 'complete', '', c.id, c.seconds, c.proof, c.digest, "
    "c.decoder, '', 0, '', 0"
    " FROM receipts c LEFT JOIN entries e ON e.id = c.entry WHERE e.id IS NULL";

HistoryRun runOf(const Statement &row)
{
    HistoryRun run{.id = row.integer(0),
                   .started = row.integer(1),
                   .command = row.text(3),
                   .folder = row.text(5),
                   .process = row.text(6),
                   .version = row.text(7),
                   .plan = row.text(8),
                   .undoing = row.text(9),
                   .all = row.integer(10),
                   .done = row.integer(11),
                   .failed = row.integer(12),
                   .cancelled = row.integer(13),
                   .undone = row.integer(14)};
    if (!row.isNull(2)) {
        run.ended = row.integer(2);
    }
    for (const auto &argument : QJsonDocument::fromJson(row.text(4).toUtf8()).array()) {
        run.arguments.append(argument.toString());
    }
    return run;
}

/// The condition on the paths `one`, `other` and those of the receipt `c`, with ?1 for the question's text.
std::string conditionFor(History::Question::About about, const std::string &one, const std::string &other)
{
    const auto on = [about](const std::string &path) {
        return about == History::Question::About::Path
                   ? "(" + path + " = ?1 OR substr(" + path + ", 1, length(?1) + 1) = ?1 || '/')"
                   : "holds(" + path + ", ?1)";
    };
    if (about == History::Question::About::Digest) {
        return "instr(c.digest, ?1) > 0";
    }
    const std::string inReceipt =
        "EXISTS (SELECT 1 FROM receipt_files f WHERE f.receipt = c.id AND " + on("f.path") + ")";
    return one.empty() ? inReceipt : on(one) + " OR " + on(other) + " OR " + inReceipt;
}

} // namespace

History::Question History::Question::from(const QString &given)
{
    static const QRegularExpression digest(QStringLiteral("\\A[0-9a-fA-F]{32}\\z"));
    if (digest.match(given).hasMatch()) {
        return {About::Digest, given.toLower()};
    }
    if (!given.contains(u'/') && !QFileInfo::exists(given)) {
        return {About::Text, given};
    }
    const QString path = QDir::cleanPath(QDir().absoluteFilePath(given));
    return {About::Path, path == QStringLiteral("/") ? QString() : path};
}

History::History(const QString &path)
    : m_database(path.isEmpty() ? nullptr : JournalFile::openToRead(path))
{
    if (m_database) {
        m_database->addHolds();
    }
}

History::~History() = default;

void History::forEachRun(const RunVisitor &visit) const
{
    visitRuns("", visit);
}

void History::forEachRunWith(Jobs jobs, const RunVisitor &visit) const
{
    constexpr const char *undoable =
        " WHERE EXISTS (SELECT 1 FROM entries x JOIN receipts y ON y.entry = x.id"
        " WHERE x.run = r.id AND x.state <> 'undone' AND (x.action IN ('rename', 'restore')"
        " OR EXISTS (SELECT 1 FROM ways_back WHERE receipt = y.id)"
        " OR EXISTS (SELECT 1 FROM receipt_files WHERE receipt = y.id AND fate = 'trashed')))";
    // What a person has undone is not to be gone on with.
    const std::string notDone =
        " WHERE r.forgotten = 0"
        " AND NOT EXISTS (SELECT 1 FROM entries WHERE run = r.id AND state = 'undone')"
        " AND (r.ended IS NULL OR EXISTS (SELECT 1 FROM entries"
        " WHERE run = r.id AND state NOT IN ('complete', 'removed'";
    visitRuns(jobs == Jobs::Undoable ? undoable
              : jobs == Jobs::Left   ? notDone + "))) AND (r.ended IS NULL OR EXISTS (SELECT 1 FROM entries"
                                                 " WHERE run = r.id AND state IN ('waiting', 'running')))"
              : jobs == Jobs::NotDoneOrFailed ? notDone + ")))"
                                              : notDone + ", 'error')))",
              visit);
}

void History::visitRuns(const std::string &condition, const RunVisitor &visit) const
{
    if (!m_database) {
        return;
    }
    Statement rows =
        m_database->prepare((runColumns + condition + " GROUP BY r.id ORDER BY r.id DESC").c_str());
    while (rows.step()) {
        visit(runOf(rows));
    }
}

std::optional<HistoryRun> History::run(std::int64_t id) const
{
    if (!m_database) {
        return std::nullopt;
    }
    Statement rows = m_database->prepare((std::string(runColumns) + " WHERE r.id = ? GROUP BY r.id").c_str());
    return rows.with(id).step() ? std::optional(runOf(rows)) : std::nullopt;
}

void History::forEachEntryOf(std::int64_t run, const EntryVisitor &visit) const
{
    if (m_database) {
        Statement rows =
            m_database->prepare((std::string(entryColumns) + " WHERE e.run = ? ORDER BY e.id").c_str());
        visitEntries(rows.with(run), visit);
    }
}

QByteArray History::wayBackOf(std::int64_t entry) const
{
    if (!m_database) {
        return {};
    }
    Statement rows = m_database->prepare("SELECT w.data FROM receipts c JOIN ways_back w ON w.receipt = c.id"
                                         " WHERE c.entry = ? ORDER BY c.id DESC LIMIT 1");
    return rows.with(entry).step() ? rows.bytes(0) : QByteArray();
}

std::optional<HistoryEntry> History::makerOf(const QString &output) const
{
    std::optional<HistoryEntry> found;
    if (m_database) {
        Statement rows = m_database->prepare(
            (std::string(entryColumns) +
             " WHERE c.id = (SELECT receipt FROM receipt_files WHERE path = ? AND role = 'output'"
             " ORDER BY id DESC LIMIT 1)")
                .c_str());
        visitEntries(rows.with(output), [&found](const HistoryEntry &entry) { found = entry; });
    }
    return found;
}

void History::forEachPlan(int most,
                          const std::function<void(std::int64_t run, const QString &plan)> &visit) const
{
    if (!m_database) {
        return;
    }
    Statement rows =
        m_database->prepare("SELECT id, plan FROM runs WHERE plan <> '' ORDER BY id DESC LIMIT ?");
    rows.with(most);
    while (rows.step()) {
        visit(rows.integer(0), rows.text(1));
    }
}

void History::forEachConversionOf(std::int64_t run, int most,
                                  const std::function<void(const Conversion &)> &visit) const
{
    if (!m_database) {
        return;
    }
    Statement rows = m_database->prepare(
        "SELECT s.path, s.size, o.size, r.seconds FROM entries e JOIN receipts r ON r.entry = e.id"
        " JOIN receipt_files s ON s.receipt = r.id AND s.role = 'source'"
        " JOIN receipt_files o ON o.receipt = r.id AND o.role = 'output'"
        " WHERE e.run = ? AND e.state = 'complete' ORDER BY e.id DESC LIMIT ?");
    rows.with(run, most);
    while (rows.step()) {
        visit({.source = rows.text(0),
               .sourceSize = rows.integer(1),
               .outputSize = rows.integer(2),
               .seconds = rows.real(3)});
    }
}

void History::find(const Question &question, const EntryVisitor &visit) const
{
    if (!m_database) {
        return;
    }
    const std::string query = std::string(entryColumns) + " WHERE " +
                              conditionFor(question.about, "e.source", "e.output") + " UNION ALL " +
                              forgottenColumns + " AND " + conditionFor(question.about, {}, {}) +
                              " ORDER BY 3 DESC, 9 DESC";
    Statement rows = m_database->prepare(query.c_str());
    visitEntries(rows.with(question.text), visit);
}

void History::visitEntries(Statement &rows, const EntryVisitor &visit) const
{
    Statement files = m_database->prepare(
        "SELECT role = 'output', path, size, seconds, nanoseconds, fate FROM receipt_files"
        " WHERE receipt = ? ORDER BY id");
    while (rows.step()) {
        HistoryEntry entry{.id = rows.integer(14),
                           .run = rows.integer(0),
                           .command = rows.text(1),
                           .process = rows.text(13),
                           .changed = rows.integer(2),
                           .source = rows.text(3),
                           .output = rows.text(4),
                           .action = rows.text(5),
                           .state = rows.text(6),
                           .reason = rows.text(7),
                           .keepReason = rows.text(15),
                           .hasReceipt = !rows.isNull(8),
                           .seconds = rows.real(9),
                           .proof = rows.text(10),
                           .digest = rows.text(11),
                           .decoder = rows.text(12),
                           .hasWayBack = rows.integer(16) != 0};
        if (entry.hasReceipt) {
            readFiles(entry, files.with(rows.integer(8)));
        }
        visit(entry);
    }
}

void History::readFiles(HistoryEntry &entry, Statement &rows)
{
    while (rows.step()) {
        entry.files.push_back({.isOutput = rows.integer(0) != 0,
                               .path = rows.text(1),
                               .stamp = {rows.integer(2), rows.integer(3), rows.integer(4)},
                               .fate = rows.text(5)});
        // Where the entry is forgotten, its first files tell what it was about.
        QString &place = entry.files.back().isOutput ? entry.output : entry.source;
        if (place.isEmpty()) {
            place = entry.files.back().path;
        }
    }
}

} // namespace kruv
