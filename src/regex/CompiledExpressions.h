// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QHash>
#include <QString>

#include <list>
#include <memory>
#include <mutex>
#include <utility>

struct URegularExpression;

namespace kruv {

/// The compiled expressions used last. They are templates to clone, never searched with. Any thread.
class CompiledExpressions
{
public:
    using Compiled = std::shared_ptr<const URegularExpression>;

    static constexpr std::size_t capacity = 64;

    /// The one that all of the program shares.
    static CompiledExpressions &shared();

    /// `flags` are URegexpFlag. Throws std::invalid_argument for a faulty pattern.
    Compiled get(const QString &pattern, unsigned flags);

private:
    using Key = std::pair<QString, unsigned>;
    struct Entry
    {
        Key key;
        Compiled compiled;
    };

    std::mutex m_lock;
    std::list<Entry> m_entries; // used last comes first
    QHash<Key, std::list<Entry>::iterator> m_entryOfKey;
};

} // namespace kruv
