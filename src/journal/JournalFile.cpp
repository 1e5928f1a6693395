// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/JournalFile.h"

#include "base/SystemError.h"
#include "journal/DatabaseError.h"
#include "journal/HistoryRun.h"
#include "journal/JournalSchema.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace kruv::JournalFile {

namespace {

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(kruv::JournalFile)
};

bool neverPatient()
{
    return false;
}

Database::Patience usualPatience()
{
    using namespace std::chrono_literals;
    constexpr auto longest = 10s;
    return [until = std::chrono::steady_clock::now() + longest] {
        return std::chrono::steady_clock::now() < until;
    };
}

/// Where programs keep what they remember of themselves.
QString stateHome()
{
    const QString given = qEnvironmentVariable("XDG_STATE_HOME");
    return QDir::isAbsolutePath(given) ? given : QDir::homePath() + QStringLiteral("/.local/state");
}

/// Other people have no business in it.
void makeFolder(const QString &folder)
{
    if (QFileInfo::exists(folder)) {
        return;
    }
    QDir().mkpath(QFileInfo(folder).path());
    if (mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST) {
        throw std::runtime_error(systemErrorText(errno).toStdString());
    }
}

bool mayWriteBeside(const QString &path)
{
    return access(QFile::encodeName(QFileInfo(path).path()).constData(), W_OK) == 0;
}

/// The way a file is worked on is set when it is empty or by itself; a busy file is not waited for by the
/// library in all of these steps.
std::unique_ptr<Database> open(const QString &path, const Database::Patience &patience)
{
    using namespace std::chrono_literals;
    for (;;) {
        try {
            auto database = std::make_unique<Database>(path, Database::Mode::Write, patience);
            database->execute("PRAGMA auto_vacuum = INCREMENTAL; PRAGMA journal_mode = WAL;"
                              "PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON;");
            JournalSchema::bringUpToDate(*database);
            return database;
        } catch (const DatabaseError &error) {
            if (error.kind() != DatabaseError::Kind::Busy || !patience()) {
                throw;
            }
            std::this_thread::sleep_for(5ms);
        }
    }
}

bool isDamaged(const QString &path)
{
    try {
        Database database(path, Database::Mode::Write, neverPatient);
        Statement check = database.prepare("PRAGMA quick_check(1)");
        return check.step() && check.text(0) != QStringLiteral("ok");
    } catch (const DatabaseError &error) {
        return error.kind() == DatabaseError::Kind::Damaged;
    }
}

} // namespace

QString usualPath()
{
    if (qEnvironmentVariableIsSet("KRUV_JOURNAL")) {
        const QString given = qEnvironmentVariable("KRUV_JOURNAL");
        return given.isEmpty() ? given : QFileInfo(given).absoluteFilePath();
    }
    return stateHome() + QStringLiteral("/kruv/journal.db");
}

Opened openToWrite(const QString &path, const Database::Patience &patience)
{
    makeFolder(QFileInfo(path).path());
    try {
        return {open(path, patience), {}};
    } catch (const DatabaseError &error) {
        if (error.kind() != DatabaseError::Kind::Damaged) {
            throw;
        }
    }
    const QString damagedOne = moveAside(path);
    return {open(path, patience), damagedOne};
}

std::unique_ptr<Database> openToRead(const QString &path)
{
    if (!QFileInfo::exists(path)) {
        return nullptr;
    }
    const bool mayWrite = mayWriteBeside(path);
    if (mayWrite && QFileInfo::exists(path + QStringLiteral("-journal"))) {
        open(path, usualPatience()); // readers can't take back what was broken off while the file was made
    }
    const auto mode = mayWrite ? Database::Mode::Read : Database::Mode::ReadOnlyPlace;
    auto database = std::make_unique<Database>(path, mode, usualPatience());
    if (mayWrite && JournalSchema::isOlder(*database)) {
        open(path, usualPatience());
    }
    if (database->number("SELECT count(*) FROM sqlite_schema") == 0) {
        return nullptr; // it is just being made
    }
    JournalSchema::requireReadable(*database);
    return database;
}

bool take(const QString &path, const HistoryRun &run, const QString &process)
{
    const Opened file = openToWrite(path, usualPatience());
    file.database->prepare("UPDATE runs SET process = ?, ended = NULL WHERE id = ? AND process = ?")
        .with(process, run.id, run.process)
        .run();
    return file.database->number("SELECT changes()") > 0;
}

bool takeToUndo(const QString &path, const HistoryRun &run, const QString &process)
{
    const Opened file = openToWrite(path, usualPatience());
    file.database->prepare("UPDATE runs SET undoing = ? WHERE id = ? AND undoing = ?")
        .with(process, run.id, run.undoing)
        .run();
    return file.database->number("SELECT changes()") > 0;
}

void forget(const QString &path, const HistoryRun &run)
{
    const Opened file = openToWrite(path, usualPatience());
    file.database->prepare("UPDATE runs SET forgotten = 1 WHERE id = ?").with(run.id).run();
}

QString moveAside(const QString &path)
{
    const QString folder = QFileInfo(path).path();
    const int lock = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (lock < 0 || flock(lock, LOCK_EX) != 0) {
        throw std::runtime_error(systemErrorText(errno).toStdString());
    }
    QString moved;
    if (isDamaged(path)) {
        moved = path + QStringLiteral(".damaged-") +
                QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmsszzz"));
        // The log goes along: it belongs to this file, and whoever mends it needs both.
        QFile::rename(path + QStringLiteral("-wal"), moved + QStringLiteral("-wal"));
        QFile::remove(path + QStringLiteral("-shm"));
        if (!QFile::rename(path, moved)) {
            close(lock);
            throw std::runtime_error(Text::tr("it is damaged and can't be moved aside").toStdString());
        }
    }
    close(lock);
    return moved;
}

} // namespace kruv::JournalFile
