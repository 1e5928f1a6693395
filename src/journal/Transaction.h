// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "journal/Database.h"
#include "journal/DatabaseError.h"

namespace kruv {

/// All changes of a block of code or none. Waits for other processes' changes when it begins.
class Transaction
{
public:
    explicit Transaction(Database &database)
        : m_database(database)
    {
        m_database.execute("BEGIN IMMEDIATE");
    }
    ~Transaction()
    {
        if (!m_committed) {
            try {
                m_database.execute("ROLLBACK");
            } catch (const DatabaseError &) { // some failures roll back by themselves
            }
        }
    }
    Transaction(const Transaction &) = delete;
    Transaction &operator=(const Transaction &) = delete;

    void commit()
    {
        m_database.execute("COMMIT");
        m_committed = true;
    }

private:
    Database &m_database;
    bool m_committed = false;
};

} // namespace kruv
