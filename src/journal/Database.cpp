// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/Database.h"

#include "journal/DatabaseError.h"

#include <QFile>
#include <QUrl>

#include <chrono>
#include <sqlite3.h>
#include <thread>

namespace kruv {

namespace {

// Each connection stays with one thread, which spares the library's own locks.
int open(const QString &path, Database::Mode mode, sqlite3 *&connection)
{
    switch (mode) {
    case Database::Mode::Write:
        return sqlite3_open_v2(QFile::encodeName(path).constData(), &connection,
                               SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    case Database::Mode::Read:
        return sqlite3_open_v2(QFile::encodeName(path).constData(), &connection,
                               SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READONLY, nullptr);
    case Database::Mode::ReadOnlyPlace:
        break;
    }
    return sqlite3_open_v2((QUrl::fromLocalFile(path).toEncoded() + "?immutable=1").constData(), &connection,
                           SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, nullptr);
}

QString textOf(sqlite3_value *value)
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_value_text(value));
    return QString::fromUtf8(bytes, sqlite3_value_bytes(value));
}

void holds(sqlite3_context *context, int, sqlite3_value **values)
{
    sqlite3_result_int(context, textOf(values[0]).contains(textOf(values[1]), Qt::CaseInsensitive) ? 1 : 0);
}

} // namespace

void Database::Close::operator()(sqlite3 *connection) const
{
    sqlite3_close_v2(connection);
}

Database::Database(const QString &path, Mode mode, Patience patience)
    : m_patience(std::move(patience))
{
    sqlite3 *connection = nullptr;
    const int result = open(path, mode, connection);
    m_connection.reset(connection); // there is one to close also where it failed
    if (result != SQLITE_OK) {
        Statement::fail(connection, result);
    }
    sqlite3_busy_handler(connection, &Database::waitWhileBusy, this);
}

Database::~Database() = default;

int Database::waitWhileBusy(void *database, int)
{
    using namespace std::chrono_literals;
    if (!static_cast<const Database *>(database)->m_patience()) {
        return 0;
    }
    std::this_thread::sleep_for(5ms);
    return 1;
}

void Database::execute(const char *statements)
{
    const int result = sqlite3_exec(m_connection.get(), statements, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) {
        Statement::fail(m_connection.get(), result);
    }
}

Statement Database::prepare(const char *statement)
{
    return {*m_connection, statement};
}

void Database::addHolds()
{
    const int result = sqlite3_create_function_v2(m_connection.get(), "holds", 2, SQLITE_UTF8, nullptr, holds,
                                                  nullptr, nullptr, nullptr);
    if (result != SQLITE_OK) {
        Statement::fail(m_connection.get(), result);
    }
}

std::int64_t Database::lastRow() const
{
    return sqlite3_last_insert_rowid(m_connection.get());
}

std::int64_t Database::number(const char *query)
{
    Statement statement = prepare(query);
    return statement.step() ? statement.integer(0) : 0;
}

} // namespace kruv
