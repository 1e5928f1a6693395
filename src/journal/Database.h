// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Statement.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>

struct sqlite3;

namespace kruv {

/// A connection to one SQLite file. One thread at a time. Throws DatabaseError.
class Database
{
public:
    enum class Mode {
        /// Makes the file where there is none.
        Write,
        Read,
        /// Where nothing can be written, not even what keeps readers and writers apart.
        ReadOnlyPlace
    };
    /// Asked every few milliseconds while another process holds the file; false gives up.
    using Patience = std::function<bool()>;

    Database(const QString &path, Mode mode, Patience patience);
    ~Database();

    void execute(const char *statements);
    Statement prepare(const char *statement);
    /// Gives statements the function holds(text, part): whether the part is in the text, in any case.
    void addHolds();
    std::int64_t lastRow() const;
    /// The one number that `query` gives.
    std::int64_t number(const char *query);

private:
    static int waitWhileBusy(void *database, int attempts);

    struct Close
    {
        void operator()(sqlite3 *connection) const;
    };
    const Patience m_patience;
    std::unique_ptr<sqlite3, Close> m_connection;
};

} // namespace kruv
