// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QByteArray>
#include <QString>

#include <concepts>
#include <cstdint>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace kruv {

/// A prepared statement: bind what stands for its question marks, then step through its rows. Throws
/// DatabaseError. The connection must outlive it.
class Statement
{
public:
    Statement(sqlite3 &connection, const char *text);

    /// Begins anew, with these values from the first question mark on.
    template <typename... Values> Statement &with(const Values &...values)
    {
        reset();
        int position = 0;
        (bind(++position, values), ...);
        return *this;
    }
    /// To the next row; false behind the last.
    bool step();
    /// For statements without rows.
    void run();

    // Of the row, by column from 0 on.
    std::int64_t integer(int column) const;
    double real(int column) const;
    QString text(int column) const;
    QByteArray bytes(int column) const;
    bool isNull(int column) const;

    /// Throws what `result` means.
    [[noreturn]] static void fail(sqlite3 *connection, int result);

private:
    void reset();
    void bind(int position, const QString &text);
    void bind(int position, const QByteArray &bytes);
    void bind(int position, double number);
    void bind(int position, std::integral auto number)
    {
        bindInteger(position, static_cast<std::int64_t>(number));
    }
    void bindInteger(int position, std::int64_t number);
    void check(int result) const;

    struct Finalize
    {
        void operator()(sqlite3_stmt *statement) const;
    };
    sqlite3 &m_connection;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace kruv
