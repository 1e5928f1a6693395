// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "journal/Statement.h"

#include "journal/DatabaseError.h"

#include <sqlite3.h>

namespace kruv {

namespace {

DatabaseError::Kind kindOf(int result)
{
    constexpr int primaryMask = 0xff;
    switch (result & primaryMask) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return DatabaseError::Kind::Damaged;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return DatabaseError::Kind::Busy;
    default:
        return DatabaseError::Kind::Other;
    }
}

} // namespace

void Statement::Finalize::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

Statement::Statement(sqlite3 &connection, const char *text)
    : m_connection(connection)
{
    sqlite3_stmt *statement = nullptr;
    const int result = sqlite3_prepare_v2(&connection, text, -1, &statement, nullptr);
    m_statement.reset(statement);
    check(result);
}

void Statement::fail(sqlite3 *connection, int result)
{
    throw DatabaseError(kindOf(result), connection ? sqlite3_errmsg(connection) : sqlite3_errstr(result));
}

void Statement::check(int result) const
{
    if (result != SQLITE_OK) {
        fail(&m_connection, result);
    }
}

void Statement::reset()
{
    // What it returns is the failure of the run before, which was thrown then.
    sqlite3_reset(m_statement.get());
}

bool Statement::step()
{
    const int result = sqlite3_step(m_statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE) {
        fail(&m_connection, result);
    }
    if (result == SQLITE_DONE) {
        reset(); // gives back what it holds of the file
    }
    return result == SQLITE_ROW;
}

void Statement::run()
{
    while (step()) {
    }
}

void Statement::bind(int position, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    check(sqlite3_bind_text(m_statement.get(), position, bytes.isNull() ? "" : bytes.constData(),
                            static_cast<int>(bytes.size()), SQLITE_TRANSIENT));
}

void Statement::bind(int position, const QByteArray &bytes)
{
    check(sqlite3_bind_blob(m_statement.get(), position, bytes.constData(), static_cast<int>(bytes.size()),
                            SQLITE_TRANSIENT));
}

void Statement::bind(int position, double number)
{
    check(sqlite3_bind_double(m_statement.get(), position, number));
}

void Statement::bindInteger(int position, std::int64_t number)
{
    check(sqlite3_bind_int64(m_statement.get(), position, number));
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

double Statement::real(int column) const
{
    return sqlite3_column_double(m_statement.get(), column);
}

QString Statement::text(int column) const
{
    const auto *bytes = reinterpret_cast<const char *>(sqlite3_column_text(m_statement.get(), column));
    return QString::fromUtf8(bytes, sqlite3_column_bytes(m_statement.get(), column));
}

QByteArray Statement::bytes(int column) const
{
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_statement.get(), column));
    return {bytes, sqlite3_column_bytes(m_statement.get(), column)};
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

} // namespace kruv
