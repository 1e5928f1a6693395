// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <stdexcept>
#include <string>

namespace kruv {

/// What SQLite could not do, in its own words.
class DatabaseError : public std::runtime_error
{
public:
    enum class Kind { Damaged, Busy, Other };

    DatabaseError(Kind kind, const std::string &words)
        : std::runtime_error(words)
        , m_kind(kind)
    {
    }

    Kind kind() const { return m_kind; }

private:
    Kind m_kind;
};

} // namespace kruv
