// SPDX-FileCopyrightText: 2026 The Kruv developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "regex/CompiledExpressions.h"

#include <limits>
#include <stdexcept>
#include <unicode/uregex.h>

namespace kruv {

namespace {

std::shared_ptr<const URegularExpression> compile(const QString &pattern, unsigned flags)
{
    if (pattern.size() > std::numeric_limits<int>::max()) {
        throw std::invalid_argument("the regular expression is too long");
    }
    UErrorCode status = U_ZERO_ERROR;
    UParseError problem = {};
    URegularExpression *compiled = uregex_open(reinterpret_cast<const UChar *>(pattern.utf16()),
                                               static_cast<int>(pattern.size()), flags, &problem, &status);
    if (U_FAILURE(status)) {
        throw std::invalid_argument("faulty regular expression \"" + pattern.toStdString() +
                                    "\" at position " + std::to_string(problem.offset) + ": " +
                                    u_errorName(status));
    }
    return {compiled, uregex_close};
}

} // namespace

CompiledExpressions &CompiledExpressions::shared()
{
    static CompiledExpressions instance;
    return instance;
}

CompiledExpressions::Compiled CompiledExpressions::get(const QString &pattern, unsigned flags)
{
    const Key key(pattern, flags);
    const std::lock_guard lock(m_lock);
    if (const auto known = m_entryOfKey.constFind(key); known != m_entryOfKey.constEnd()) {
        m_entries.splice(m_entries.begin(), m_entries, *known);
        return m_entries.front().compiled;
    }
    m_entries.push_front({key, compile(pattern, flags)});
    m_entryOfKey.insert(key, m_entries.begin());
    Compiled compiled = m_entries.front().compiled;
    if (m_entries.size() > capacity) {
        m_entryOfKey.remove(m_entries.back().key);
        m_entries.pop_back();
    }
    return compiled;
}

} // namespace kruv
