// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/Journal.h"

#include "journal/DatabaseError.h"
#include "journal/JournalFile.h"
#include "journal/Transaction.h"
#include "platform/MainThread.h"

#include <QDateTime>

#include <exception>
#include <utility>

using namespace std::chrono_literals;

namespace kruv {

namespace {

constexpr auto batchTime = 500ms;
// For a list to be in the file before its first job starts. Twenty thousand entries need a fraction of it.
// A person sees the main thread wait.
constexpr std::chrono::milliseconds longestWait = 1s;
// While another process keeps the file busy; at the end a person waits for the program.
constexpr auto patience = 10s;
constexpr auto patienceAtTheEnd = 2s;

} // namespace

Journal::Journal(const QString &path, Complaint complain)
    : m_path(path)
    , m_complain(std::move(complain))
    , m_isOff(path.isEmpty())
{
}

Journal::~Journal()
{
    finish();
}

Journal::Number Journal::addRun(const RunRecord &record)
{
    const Number run = m_nextNumber++;
    add([=](JournalWriter &to, Time when) { to.addRun(run, record, when); });
    return run;
}

Journal::Number Journal::resumeRun(const ResumedRun &resumed)
{
    const Number run = m_nextNumber;
    m_nextNumber += 1 + resumed.waiting.size();
    add([=](JournalWriter &to, Time when) { to.resumeRun(run, run + 1, resumed, when); });
    return run;
}

Journal::Number Journal::addEntries(Number run, std::vector<EntryRecord> records)
{
    const Number first = m_nextNumber;
    m_nextNumber += records.size();
    add([=, records = std::move(records)](JournalWriter &to, Time when) {
        to.addEntries(run, first, records, when);
    });
    hurry();
    return first;
}

void Journal::setRunning(Number entry)
{
    add([=](JournalWriter &to, Time when) { to.setRunning(entry, when); });
}

void Journal::end(Number entry, EntryEnd end)
{
    add([=, end = std::move(end)](JournalWriter &to, Time when) { to.end(entry, end, when); });
}

void Journal::expect(Number entry, Receipt receipt)
{
    add([=, receipt = std::move(receipt)](JournalWriter &to, Time when) { to.expect(entry, receipt, when); });
}

void Journal::tryAgain(Number run, Number entry)
{
    add([=](JournalWriter &to, Time when) { to.tryAgain(run, entry, when); });
}

void Journal::endRun(Number run)
{
    add([=](JournalWriter &to, Time when) { to.endRun(run, when); });
}

void Journal::setUndone(std::int64_t entry)
{
    add([=](JournalWriter &to, Time when) { to.setUndone(entry, when); });
}

void Journal::forgetRun(std::int64_t run)
{
    add([=](JournalWriter &to, Time) { to.forgetRun(run); });
}

void Journal::endUndoing(std::int64_t run)
{
    add([=](JournalWriter &to, Time) { to.endUndoing(run); });
}

bool Journal::isOn()
{
    const std::lock_guard lock(m_lock);
    return !m_isOff;
}

void Journal::finish()
{
    {
        const std::lock_guard lock(m_lock);
        m_closing = true;
    }
    m_wake.notify_one();
    if (m_thread.joinable()) {
        m_thread.join();
    }
    m_isOff = true;
    complain();
}

void Journal::add(Change change)
{
    const std::lock_guard lock(m_lock);
    if (m_isOff) {
        return;
    }
    m_changes.push_back({std::move(change), QDateTime::currentMSecsSinceEpoch()});
    ++m_said;
    if (!m_thread.joinable()) {
        m_thread = std::thread([this] { work(); });
    }
    if (m_changes.size() == 1) { // else it is awake, and lets a batch gather
        m_wake.notify_one();
    }
}

void Journal::hurry()
{
    const std::lock_guard lock(m_lock);
    m_urgent = true;
    m_wake.notify_one();
}

void Journal::waitUntilWritten()
{
    std::unique_lock lock(m_lock);
    const std::uint64_t mine = m_said;
    const auto isThere = [this, mine] { return m_isOff || m_inFile >= mine; };
    if (!m_waits || isThere()) {
        return;
    }
    m_urgent = true;
    m_wake.notify_one();
    const auto limit = MainThread::isCurrent() ? longestWait : std::chrono::milliseconds(patience);
    m_waits = m_written.wait_for(lock, limit, isThere) && m_waits;
}

void Journal::work()
{
    std::unique_lock lock(m_lock);
    const auto isPressed = [this] { return m_urgent || m_closing; };
    for (;;) {
        m_wake.wait(lock, [this] { return m_closing || !m_changes.empty(); });
        if (m_changes.empty()) {
            break;
        }
        m_wake.wait_for(lock, batchTime, isPressed);
        m_urgent = false;
        const std::uint64_t said = m_said;
        const std::vector<Dated> changes = std::exchange(m_changes, {});
        lock.unlock();
        write(changes);
        lock.lock();
        m_inFile = said;
        m_waits = true; // it can be written to again
        m_written.notify_all();
        lock.unlock();
        prune(); // when the list is in the file that somebody waited for
        lock.lock();
    }
    lock.unlock();
    m_writer.reset(); // where it was opened
}

void Journal::write(const std::vector<Dated> &changes)
try {
    m_batchBegan = std::chrono::steady_clock::now();
    if (!m_writer) {
        openFile();
    }
    Transaction transaction(m_writer->database());
    for (const Dated &each : changes) {
        each.change(*m_writer, each.when);
    }
    transaction.commit();
} catch (const DatabaseError &error) {
    m_writer.reset();
    giveUp(reasonFor(error));
} catch (const std::exception &failure) {
    m_writer.reset();
    giveUp(QString::fromUtf8(failure.what()));
}

QString Journal::reasonFor(const DatabaseError &error) const
try {
    if (error.kind() == DatabaseError::Kind::Busy) {
        return tr("another process keeps it busy");
    }
    const QString kept =
        error.kind() == DatabaseError::Kind::Damaged ? JournalFile::moveAside(m_path) : QString();
    return kept.isEmpty() ? QString::fromUtf8(error.what())
                          : tr("it was damaged, and is kept as %1").arg(kept);
} catch (const std::exception &failure) {
    return QString::fromUtf8(failure.what());
}

void Journal::prune()
try {
    if (m_writer && !std::exchange(m_pruned, true)) {
        m_batchBegan = std::chrono::steady_clock::now();
        m_writer->prune(QDateTime::currentMSecsSinceEpoch());
    }
} catch (const std::exception &) { // the next process does it
}

void Journal::openFile()
{
    JournalFile::Opened opened = JournalFile::openToWrite(m_path, [this] { return isPatient(); });
    m_writer = std::make_unique<JournalWriter>(std::move(opened.database));
    if (!opened.damagedOne.isEmpty()) {
        say(tr("The journal of what was done was damaged. It is kept as %1, and a new one begins.")
                .arg(opened.damagedOne));
    }
}

void Journal::giveUp(const QString &reason)
{
    {
        const std::lock_guard lock(m_lock);
        m_isOff = true;
        m_changes.clear();
    }
    say(tr("The journal %1 can't be written: %2. What is done now is not recorded; the files themselves are "
           "not affected.")
            .arg(m_path, reason));
}

void Journal::say(const QString &sentence)
{
    const std::lock_guard lock(m_lock);
    m_sentences.push_back(sentence);
    QMetaObject::invokeMethod(
        &m_context, [this] { complain(); }, Qt::QueuedConnection);
}

void Journal::complain()
{
    std::vector<QString> sentences;
    {
        const std::lock_guard lock(m_lock);
        sentences.swap(m_sentences);
    }
    for (const QString &sentence : sentences) {
        m_complain(sentence);
    }
}

bool Journal::isPatient()
{
    const std::lock_guard lock(m_lock);
    const auto waited = std::chrono::steady_clock::now() - m_batchBegan;
    return waited < (m_closing ? patienceAtTheEnd : patience);
}

} // namespace kruv
